#include "tovak/command_base.h"

#include <string>
#include <utility>

#include "commands/option_text.h"
#include "platform/console.h"

CommandBase::CommandBase(Parameters* parameters) : parameters(parameters) {}

CommandBase::~CommandBase() = default;

bool CommandBase::checkConflictParameters() { return true; }

bool CommandBase::run() {
  addSupportedParameters();
  if (!checkSupportedParameters() || !checkConflictParameters() || !translateParameters()) {
    return false;
  }
  addParameter("--output", "/var/log/Zantor_Support/");
  return true;
}

bool CommandBase::checkSupportedParameters() {
  return parameters->checkSupportedParameters(supportedParameters);
}

std::string CommandBase::getCommandLine() { return commandLine; }

void CommandBase::addCommand(std::string text) { commandLine = std::move(text); }

void CommandBase::addParameter(std::string text) {
  commandLine += ' ';
  commandLine += text;
}

void CommandBase::addParameter(std::string name, std::string value) {
  // Only the blank decides: the shell gets the value as one word, nothing else is escaped.
  const bool quoted = value.find(' ') != std::string::npos;
  commandLine += ' ';
  commandLine += name;
  commandLine += ' ';
  if (quoted) commandLine += '"';
  commandLine += value;
  if (quoted) commandLine += '"';
}

bool CommandBase::translateNoValueParameter(std::string parameter1, std::string parameter2,
                                            std::string targetOption) {
  if (!parameters->isSetParameter(parameter1, parameter2)) {
    return true;
  }
  if (!parameters->getParameterValue(parameter1, parameter2).empty()) {
    tovak::writeLine(tovak::carryValueMessage(parameter1, parameter2));
    return false;
  }
  addParameter(std::move(targetOption));
  return true;
}

bool CommandBase::translateHasValueParameter(std::string parameter1, std::string parameter2,
                                             std::string targetOption) {
  if (!parameters->isSetParameter(parameter1, parameter2)) {
    return true;
  }
  std::string value = parameters->getParameterValue(parameter1, parameter2);
  if (value.empty()) {
    tovak::writeLine(tovak::emptyValueMessage(parameter1, parameter2));
    return false;
  }
  addParameter(std::move(targetOption), std::move(value));
  return true;
}
