#include "entry/translation.h"

#include <memory>
#include <string>

#include "entry/argument_copy.h"
#include "platform/console.h"
#include "tovak/acquire_command.h"
#include "tovak/compare_update_command.h"
#include "tovak/quenmark_command.h"

namespace tovak {

std::unique_ptr<CommandBase> createTranslator(const std::string& word, Parameters* parameters) {
  if (word == "acquire" || word == "ac") {
    return std::make_unique<AcquireCommand>(parameters);
  }
  if (word == "compare" || word == "co") {
    return std::make_unique<CompareUpdateCommand>(parameters, "compare");
  }
  if (word == "update" || word == "up") {
    return std::make_unique<CompareUpdateCommand>(parameters, "update");
  }
  if (word == "quenmark" || word == "qk") {
    return std::make_unique<QuenmarkCommand>(parameters);
  }
  return nullptr;
}

Translation translateArguments(int argc, char** argv) {
  const ArgumentCopy copy(argc, argv);
  blankArguments(argc, argv);
  Parameters parameters(copy.count(), copy.strings());
  if (!parameters.checkValidParametersFormat()) {
    return Translation{};
  }
  const std::string word = parameters.getCommand();
  const std::unique_ptr<CommandBase> translator = createTranslator(word, &parameters);
  if (translator == nullptr) {
    if (word.empty()) {
      writeLine("Please specify the command!");
    } else {
      writeLine("The command: " + word + " is not supported.");
    }
    return Translation{};
  }
  if (!translator->run()) {
    return Translation{};
  }
  return Translation{true, translator->getCommandLine()};
}

}  // namespace tovak
