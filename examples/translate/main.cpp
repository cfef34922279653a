// tovak-translate: a dry run for people migrating scripts. Given a legacy command line, it
// prints the Fendix command line that libtovak would run, and runs nothing. A refused line
// gets the library's own messages and exit code 1.
//
//   tovak-translate compare -F -l /srv/repo -L
#include <tovak/tovak.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
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

// Runs the translation with standard output held in a temporary file, so that it carries
// the translated line alone; the library's messages follow it on standard error.
bool translate(Parameters& parameters, std::string& line, std::string& messages) {
  std::FILE* held = std::tmpfile();
  if (held == nullptr) return false;
  std::fflush(stdout);
  const int saved = dup(STDOUT_FILENO);
  dup2(fileno(held), STDOUT_FILENO);
  bool accepted = parameters.checkValidParametersFormat();
  const std::string word = parameters.getCommand();
  std::unique_ptr<CommandBase> translator = translatorFor(word, &parameters);
  if (accepted && translator == nullptr) {
    std::printf("%s\n", word.empty() ? "Please specify the command!"
                                     : ("The command: " + word + " is not supported.").c_str());
    accepted = false;
  }
  accepted = accepted && translator->run();
  if (accepted) line = translator->getCommandLine();
  std::fflush(stdout);
  dup2(saved, STDOUT_FILENO);
  close(saved);
  std::rewind(held);
  for (int c = std::fgetc(held); c != EOF; c = std::fgetc(held)) messages += static_cast<char>(c);
  std::fclose(held);
  return accepted;
}

}  // namespace

int main(int argc, char** argv) {
  Parameters parameters(argc, argv);
  std::string line;
  std::string messages;
  if (!translate(parameters, line, messages)) {
    std::fputs(messages.c_str(), stdout);
    return 1;
  }
  std::printf("%s\n", line.c_str());
  std::fputs(messages.c_str(), stderr);
  return 0;
}
