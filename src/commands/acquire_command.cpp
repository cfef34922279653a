#include "tovak/acquire_command.h"

#include <string>

#include "commands/option_text.h"
#include "commands/own_translators.h"
#include "platform/console.h"

AcquireCommand::AcquireCommand(Parameters* parameters) : CommandBase(parameters) {}

AcquireCommand::~AcquireCommand() = default;

void AcquireCommand::addSupportedParameters() {
  supportedParameters.reserve(supportedParameters.size() + 15);
  tovak::appendRow(supportedParameters, "-l", "--local");
  tovak::appendRow(supportedParameters, "-m", "--machine-type");
  tovak::appendRow(supportedParameters, "--meta-only", "");
  tovak::appendRow(supportedParameters, "-o", "--os");
  tovak::appendRow(supportedParameters, "-L", "--latest");
  tovak::appendRow(supportedParameters, "-i", "--id");
  tovak::appendRow(supportedParameters, "-r", "--report");
  tovak::appendRow(supportedParameters, "--proxy-address", "");
  tovak::appendRow(supportedParameters, "--proxy-user", "");
  tovak::appendRow(supportedParameters, "--proxy-port", "");
  tovak::appendRow(supportedParameters, "--proxy-password", "");
  tovak::appendRow(supportedParameters, "--no-proxy", "");
  tovak::appendRow(supportedParameters, "--xml", "");
  tovak::appendRow(supportedParameters, "-u", "--unattended");
  tovak::appendRow(supportedParameters, "--ignore-req", "");
}

bool AcquireCommand::translateParameters() {
  return tovak::OwnTranslators::translate(*this, tovak::OptionIndex(*parameters));
}

bool tovak::OwnTranslators::translate(AcquireCommand& command, const OptionIndex& index) {
  std::string& commandLine = command.commandLine;
  command.addCommand("update acquire");
  if (!tovak::translateValued(commandLine, index, "-l", "--local", "--dir")) {
    return false;
  }
  // An explicit ID list overrides the machine filter and the request for the latest updates.
  const bool byId = tovak::isSetInEitherForm(index, "-i", "--id");
  if (byId) {
    tovak::appendOption(commandLine, "--scope", "individual");
  } else if (!tovak::translateValued(commandLine, index, "-m", "--machine-type", "--mt") ||
             !tovak::translateValued(commandLine, index, "-o", "--os", "--ostype")) {
    return false;
  }
  if (!tovak::translateFlag(commandLine, index, "--meta-only", "", "--metaonly")) {
    return false;
  }
  if (tovak::isSetInEitherForm(index, "-L", "--latest")) {
    if (!tovak::valueInEitherForm(index, "-L", "--latest").empty()) {
      return tovak::refuseCarriedValue("-L", "--latest");
    }
    if (!byId) {
      tovak::appendOption(commandLine, "--scope", "latest");
    }
  }
  if (!tovak::translateValued(commandLine, index, "-i", "--id", "--includeid") ||
      !tovak::translateFlag(commandLine, index, "-r", "--report", "--report") ||
      !tovak::translateFlag(commandLine, index, "--xml", "", "--xml") ||
      !tovak::translateFlag(commandLine, index, "--ignore-req", "", "--noreq")) {
    return false;
  }
  if (!index.isSet("--proxy-address")) {
    return tovak::checkNoCredentialsWithoutAddress(
        index, "--proxy-address", {"--proxy-port", "--proxy-user", "--proxy-password"});
  }
  std::string proxy =
      tovak::credentialValue(index.valueOf("--proxy-user"), index.valueOf("--proxy-password"),
                             index.valueOf("--proxy-address"));
  proxy += ':';
  proxy += index.valueOf("--proxy-port");
  tovak::appendOption(commandLine, "--proxy", proxy);
  return true;
}
