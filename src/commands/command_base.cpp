#include "tovak/command_base.h"

#include <string>
#include <utility>

#include "commands/option_text.h"
#include "commands/own_translators.h"
#include "parameters/option_index.h"
#include "platform/console.h"

CommandBase::CommandBase(Parameters* parameters) : parameters(parameters) {}

CommandBase::~CommandBase() = default;

bool CommandBase::checkConflictParameters() { return true; }

bool CommandBase::run() {
  addSupportedParameters();
  // The same check as checkSupportedParameters(), on an index that the library's own
  // translators then answer from: one pass over the tokens for the whole call.
  tovak::OptionIndex index(*parameters);
  if (!tovak::checkSupported(index, supportedParameters) || !checkConflictParameters() ||
      !tovak::OwnTranslators::translateAny(*this, index)) {
    return false;
  }
  tovak::appendOption(commandLine, "--output", "/var/log/Zantor_Support/");
  return true;
}

bool CommandBase::checkSupportedParameters() {
  return parameters->checkSupportedParameters(supportedParameters);
}

std::string CommandBase::getCommandLine() { return commandLine; }

void CommandBase::addCommand(std::string text) {
  // Room for a usual translated line at once, so that appending the options does not move
  // it from buffer to buffer.
  constexpr std::size_t kUsualLineSize = 256;
  commandLine = std::move(text);
  commandLine.reserve(kUsualLineSize);
}

void CommandBase::addParameter(std::string text) { tovak::appendWord(commandLine, text); }

void CommandBase::addParameter(std::string name, std::string value) {
  tovak::appendOption(commandLine, name, value);
}

// A caller's names are checked as isSetParameter checks them, and a bad one leaves the
// line as it is.
bool CommandBase::translateNoValueParameter(std::string parameter1, std::string parameter2,
                                            std::string targetOption) {
  if (!tovak::checkQueryNames(parameter1, parameter2, tovak::kSetQueryDashless)) {
    return true;
  }
  return tovak::translateFlag(commandLine, tovak::OptionIndex(*parameters), parameter1, parameter2,
                              targetOption);
}

bool CommandBase::translateHasValueParameter(std::string parameter1, std::string parameter2,
                                             std::string targetOption) {
  if (!tovak::checkQueryNames(parameter1, parameter2, tovak::kSetQueryDashless)) {
    return true;
  }
  return tovak::translateValued(commandLine, tovak::OptionIndex(*parameters), parameter1,
                                parameter2, targetOption);
}
