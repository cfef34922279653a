#include "tovak/acquire_command.h"

#include <string>

#include "commands/option_text.h"
#include "platform/console.h"

AcquireCommand::AcquireCommand(Parameters* parameters) : CommandBase(parameters) {}

AcquireCommand::~AcquireCommand() = default;

void AcquireCommand::addSupportedParameters() {
  // One row per line, as the option table reads.
  // clang-format off
  tovak::appendRows(supportedParameters, {
      {"-l", "--local"},
      {"-m", "--machine-type"},
      {"--meta-only", ""},
      {"-o", "--os"},
      {"-L", "--latest"},
      {"-i", "--id"},
      {"-r", "--report"},
      {"--proxy-address", ""},
      {"--proxy-user", ""},
      {"--proxy-port", ""},
      {"--proxy-password", ""},
      {"--no-proxy", ""},
      {"--xml", ""},
      {"-u", "--unattended"},
      {"--ignore-req", ""},
  });
  // clang-format on
}

bool AcquireCommand::translateParameters() {
  addCommand("update acquire");
  if (!translateHasValueParameter("-l", "--local", "--dir")) {
    return false;
  }
  // An explicit ID list overrides the machine filter and the request for the latest updates.
  const bool byId = parameters->isSetParameter("-i", "--id");
  if (byId) {
    addParameter("--scope", "individual");
  } else if (!translateHasValueParameter("-m", "--machine-type", "--mt") ||
             !translateHasValueParameter("-o", "--os", "--ostype")) {
    return false;
  }
  if (!translateNoValueParameter("--meta-only", "", "--metaonly")) {
    return false;
  }
  if (parameters->isSetParameter("-L", "--latest")) {
    if (!parameters->getParameterValue("-L", "--latest").empty()) {
      tovak::writeLine(tovak::carryValueMessage("-L", "--latest"));
      return false;
    }
    if (!parameters->isSetParameter("-i", "--id")) {
      addParameter("--scope", "latest");
    }
  }
  if (!translateHasValueParameter("-i", "--id", "--includeid") ||
      !translateNoValueParameter("-r", "--report", "--report") ||
      !translateNoValueParameter("--xml", "", "--xml") ||
      !translateNoValueParameter("--ignore-req", "", "--noreq")) {
    return false;
  }
  if (!parameters->isSetParameter("--proxy-address", "")) {
    return tovak::checkNoCredentialsWithoutAddress(
        *parameters, "--proxy-address", {"--proxy-port", "--proxy-user", "--proxy-password"});
  }
  const std::string address = tovak::longOptionValue(*parameters, "--proxy-address");
  const std::string port = tovak::longOptionValue(*parameters, "--proxy-port");
  const std::string user = tovak::longOptionValue(*parameters, "--proxy-user");
  const std::string password = tovak::longOptionValue(*parameters, "--proxy-password");
  addParameter("--proxy", tovak::credentialValue(user, password, address) + ":" + port);
  return true;
}
