#include "tovak/command_base.h"

#include <string>
#include <string_view>
#include <utility>

#include "commands/option_text.h"

namespace {

// " name value", the value in double quotes when it holds a blank. Only a blank decides: the
// shell gets the value as one word, and nothing is escaped.
void appendOption(std::string& line, std::string_view name, std::string_view value) {
  const bool quoted = value.find(' ') != std::string_view::npos;
  line.append(1, ' ').append(name).append(1, ' ');
  if (quoted) line += '"';
  line += value;
  if (quoted) line += '"';
}

}  // namespace

CommandBase::CommandBase(Parameters* parameters) : parameters(parameters) {}

CommandBase::~CommandBase() = default;

bool CommandBase::checkConflictParameters() { return true; }

bool CommandBase::run() {
  addSupportedParameters();
  if (!checkSupportedParameters() || !checkConflictParameters() || !translateParameters()) {
    return false;
  }
  appendOption(commandLine, "--output", "/var/log/Zantor_Support/");
  return true;
}

bool CommandBase::checkSupportedParameters() {
  return parameters->checkSupportedParameters(supportedParameters);
}

std::string CommandBase::getCommandLine() { return commandLine; }

void CommandBase::addCommand(std::string text) {
  // Room for a usual translated line at once, rather than a new buffer for every few options
  // appended: the allocations of a call are budgeted (bench/costs.py).
  constexpr std::size_t kUsualLineSize = 256;
  commandLine = std::move(text);
  commandLine.reserve(kUsualLineSize);
}

void CommandBase::addParameter(std::string text) { commandLine.append(1, ' ').append(text); }

void CommandBase::addParameter(std::string name, std::string value) {
  appendOption(commandLine, name, value);
}

bool CommandBase::translateNoValueParameter(std::string parameter1, std::string parameter2,
                                            std::string targetOption) {
  if (!parameters->isSetParameter(parameter1, parameter2)) {
    return true;
  }
  if (!parameters->getParameterValue(parameter1, parameter2).empty()) {
    return tovak::refuseCarriedValue(parameter1, parameter2);
  }
  addParameter(targetOption);
  return true;
}

bool CommandBase::translateHasValueParameter(std::string parameter1, std::string parameter2,
                                             std::string targetOption) {
  if (!parameters->isSetParameter(parameter1, parameter2)) {
    return true;
  }
  const std::string value = parameters->getParameterValue(parameter1, parameter2);
  if (value.empty()) {
    return tovak::refuseEmptyValue(parameter1, parameter2);
  }
  addParameter(targetOption, value);
  return true;
}
