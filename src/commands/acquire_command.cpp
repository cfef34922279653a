#include "tovak/acquire_command.h"

#include <string>

#include "commands/option_text.h"

AcquireCommand::AcquireCommand(Parameters* parameters) : CommandBase(parameters) {}

AcquireCommand::~AcquireCommand() = default;

void AcquireCommand::addSupportedParameters() {
  supportedParameters.insert(
      supportedParameters.end(),
      {{"-l", "--local"}, {"-m", "--machine-type"}, {"--meta-only", ""}, {"-o", "--os"},
       {"-L", "--latest"}, {"-i", "--id"}, {"-r", "--report"}, {"--proxy-address", ""},
       {"--proxy-user", ""}, {"--proxy-port", ""}, {"--proxy-password", ""},
       {"--no-proxy", ""}, {"--xml", ""}, {"-u", "--unattended"}, {"--ignore-req", ""}});
}

bool AcquireCommand::translateParameters() {
  addCommand("update acquire");
  if (!translateHasValueParameter("-l", "--local", "--dir")) {
    return false;
  }
  // An explicit ID list overrides the machine filter and the request for the latest updates;
  // a value on "-L" is refused all the same.
  const bool byId = parameters->isSetParameter("-i", "--id");
  if (byId) {
    addParameter("--scope", "individual");
  } else if (!tovak::translateEach(*this, {{"-m", "--machine-type", "--mt", true},
                                           {"-o", "--os", "--ostype", true}})) {
    return false;
  }
  if (!translateNoValueParameter("--meta-only", "", "--metaonly")) {
    return false;
  }
  if (byId) {
    if (!parameters->getParameterValue("-L", "--latest").empty()) {
      return tovak::refuseCarriedValue("-L", "--latest");
    }
  } else if (!translateNoValueParameter("-L", "--latest", "--scope latest")) {
    return false;
  }
  if (!tovak::translateEach(*this, {{"-i", "--id", "--includeid", true},
                                    {"-r", "--report", "--report", false},
                                    {"--xml", "", "--xml", false},
                                    {"--ignore-req", "", "--noreq", false}})) {
    return false;
  }
  if (!parameters->isSetParameter("--proxy-address", "")) {
    return tovak::checkNoCredentialsWithoutAddress(
        *parameters, "--proxy-address", {"--proxy-port", "--proxy-user", "--proxy-password"});
  }
  const std::string user = parameters->getParameterValue("--proxy-user", "");
  const std::string password = parameters->getParameterValue("--proxy-password", "");
  const std::string address = parameters->getParameterValue("--proxy-address", "");
  const std::string port = parameters->getParameterValue("--proxy-port", "");
  addParameter("--proxy", tovak::credentialValue(user, password, address) + ':' + port);
  return true;
}
