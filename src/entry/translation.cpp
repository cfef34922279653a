#include "entry/translation.h"

#include <memory>
#include <string>

#include "entry/argument_copy.h"
#include "platform/console.h"
#include "tovak/acquire_command.h"
#include "tovak/compare_update_command.h"
#include "tovak/quenmark_command.h"

namespace tovak {

const std::array<CommandWord, 4> kCommandWords = {{
    {"compare", "co",
     [](Parameters* p) -> std::unique_ptr<CommandBase> {
       return std::make_unique<CompareUpdateCommand>(p, "compare");
     }},
    {"update", "up",
     [](Parameters* p) -> std::unique_ptr<CommandBase> {
       return std::make_unique<CompareUpdateCommand>(p, "update");
     }},
    {"acquire", "ac",
     [](Parameters* p) -> std::unique_ptr<CommandBase> {
       return std::make_unique<AcquireCommand>(p);
     }},
    {"quenmark", "qk",
     [](Parameters* p) -> std::unique_ptr<CommandBase> {
       return std::make_unique<QuenmarkCommand>(p);
     }},
}};

std::unique_ptr<CommandBase> createTranslator(const std::string& word, Parameters* parameters) {
  for (const CommandWord& known : kCommandWords) {
    if (word == known.name || word == known.abbreviation) {
      return known.create(parameters);
    }
  }
  return nullptr;
}

namespace {

// The table is protected; a pointer to the member, taken through a derived class, reads it.
struct TableReader : CommandBase {
  static const SupportedParameterTable& rowsOf(const CommandBase& command) {
    return command.*(&TableReader::supportedParameters);
  }
};

}  // namespace

SupportedParameterTable optionTableOf(const std::string& word) {
  // Filling the table reads nothing of a line, so the translator is given none.
  const std::unique_ptr<CommandBase> translator = createTranslator(word, nullptr);
  if (translator == nullptr) {
    return SupportedParameterTable();
  }
  translator->addSupportedParameters();
  return TableReader::rowsOf(*translator);
}

Translation translateArguments(int argc, char** argv) {
  const ArgumentCopy copy(argc, argv);
  copy.blankOriginals();
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
