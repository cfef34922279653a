#include "tovak/quenmark_command.h"

#include <string>

#include "commands/option_text.h"
#include "commands/own_translators.h"

QuenmarkCommand::QuenmarkCommand(Parameters* parameters) : CommandBase(parameters) {}

QuenmarkCommand::~QuenmarkCommand() = default;

void QuenmarkCommand::addSupportedParameters() {
  supportedParameters.reserve(supportedParameters.size() + 4);
  tovak::appendRow(supportedParameters, "-s", "--scan");
  tovak::appendRow(supportedParameters, "--vq-address", "");
  tovak::appendRow(supportedParameters, "--vq-user", "");
  tovak::appendRow(supportedParameters, "--vq-password", "");
}

bool QuenmarkCommand::translateParameters() {
  return tovak::OwnTranslators::translate(*this, tovak::OptionIndex(*parameters));
}

bool tovak::OwnTranslators::translate(QuenmarkCommand& command, const OptionIndex& index) {
  std::string& commandLine = command.commandLine;
  // Without the scan flag the line has no subcommand and starts with the blank of its
  // first option; scripts rely on it being run all the same.
  if (tovak::isSetInEitherForm(index, "-s", "--scan")) {
    command.addCommand("update scan");
  }
  if (!index.isSet("--vq-address")) {
    return tovak::checkNoCredentialsWithoutAddress(index, "--vq-address",
                                                   {"--vq-user", "--vq-password"});
  }
  const std::string address(index.valueOf("--vq-address"));
  const std::string user(index.valueOf("--vq-user"));
  const std::string password(index.valueOf("--vq-password"));
  tovak::appendOption(commandLine, "--zul", tovak::credentialValue(user, password, address));
  return true;
}
