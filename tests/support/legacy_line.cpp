#include "legacy_line.h"

#include <utility>

#include "capture.h"
#include "entry/translation.h"

ArgumentVector::ArgumentVector(std::vector<std::string> arguments)
    : storage_(std::move(arguments)) {
  for (std::string& argument : storage_) {
    pointers_.push_back(argument.data());
  }
}

TranslationOutcome translateLine(const std::vector<std::string>& words) {
  std::vector<std::string> arguments{"tovak"};
  arguments.insert(arguments.end(), words.begin(), words.end());
  ArgumentVector vector(arguments);
  StdoutCapture capture;
  tovak::Translation translation = tovak::translateArguments(vector.argc(), vector.argv());
  return {translation.accepted, translation.commandLine, capture.text()};
}
