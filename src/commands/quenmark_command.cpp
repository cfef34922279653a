#include "tovak/quenmark_command.h"

#include <string>

#include "commands/option_text.h"

QuenmarkCommand::QuenmarkCommand(Parameters* parameters) : CommandBase(parameters) {}

QuenmarkCommand::~QuenmarkCommand() = default;

void QuenmarkCommand::addSupportedParameters() {
  supportedParameters.insert(supportedParameters.end(), {{"-s", "--scan"},
                                                         {"--vq-address", ""},
                                                         {"--vq-user", ""},
                                                         {"--vq-password", ""}});
}

bool QuenmarkCommand::translateParameters() {
  // Without the scan flag the line has no subcommand and starts with the blank of its
  // first option; scripts rely on it being run all the same.
  if (parameters->isSetParameter("-s", "--scan")) {
    addCommand("update scan");
  }
  if (!parameters->isSetParameter("--vq-address", "")) {
    return tovak::checkNoCredentialsWithoutAddress(*parameters, "--vq-address",
                                                   {"--vq-user", "--vq-password"});
  }
  const std::string address = parameters->getParameterValue("--vq-address", "");
  const std::string user = parameters->getParameterValue("--vq-user", "");
  const std::string password = parameters->getParameterValue("--vq-password", "");
  addParameter("--zul", tovak::credentialValue(user, password, address));
  return true;
}
