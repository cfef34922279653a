// tovak-translate: a dry run for people migrating scripts. Given a legacy command line, it
// prints the Fendix command line that libtovak would run, and runs nothing. A refused line
// gets the library's own messages and exit code 1.
//
//   tovak-translate compare -F -l /srv/repo -L
#include <tovak/tovak.h>

#include <iostream>
#include <memory>
#include <sstream>
#include <string>

namespace {

// The same choice the library makes for a command word.
std::unique_ptr<CommandBase> translatorFor(const std::string& word, Parameters* parameters) {
  if (word == "acquire" || word == "ac") return std::make_unique<AcquireCommand>(parameters);
  if (word == "compare" || word == "co")
    return std::make_unique<CompareUpdateCommand>(parameters, "compare");
  if (word == "update" || word == "up")
    return std::make_unique<CompareUpdateCommand>(parameters, "update");
  if (word == "quenmark" || word == "qk") return std::make_unique<QuenmarkCommand>(parameters);
  return nullptr;
}

// Runs the translation with the library's messages held back, so that standard output
// carries the translated line alone; the messages follow it on standard error.
bool translate(Parameters& parameters, std::string& line, std::string& messages) {
  std::ostringstream held;
  std::streambuf* previous = std::cout.rdbuf(held.rdbuf());
  bool accepted = parameters.checkValidParametersFormat();
  const std::string word = parameters.getCommand();
  std::unique_ptr<CommandBase> translator = translatorFor(word, &parameters);
  if (accepted && translator == nullptr) {
    std::cout << (word.empty() ? "Please specify the command!"
                               : "The command: " + word + " is not supported.")
              << '\n';
    accepted = false;
  }
  accepted = accepted && translator->run();
  if (accepted) line = translator->getCommandLine();
  std::cout.rdbuf(previous);
  messages = held.str();
  return accepted;
}

}  // namespace

int main(int argc, char** argv) {
  Parameters parameters(argc, argv);
  std::string line;
  std::string messages;
  if (!translate(parameters, line, messages)) {
    std::cout << messages << std::flush;
    return 1;
  }
  std::cout << line << '\n';
  std::cerr << messages;
  return 0;
}
