#include "tovak/acquire_command.h"

#include <string>

#include "commands/option_text.h"
#include "commands/own_translators.h"
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
      tovak::writeLine(tovak::carryValueMessage("-L", "--latest"));
      return false;
    }
    if (!tovak::isSetInEitherForm(index, "-i", "--id")) {
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
