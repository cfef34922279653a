#include "tovak/compare_update_command.h"

#include <string>
#include <utility>

#include "commands/option_text.h"
#include "commands/own_translators.h"
#include "platform/console.h"

namespace {

// The text after key in value, up to the next blank or comma; "" when key is absent.
std::string_view matchValueIn(std::string_view value, std::string_view key) {
  const std::size_t found = value.find(key);
  if (found == std::string_view::npos) {
    return std::string_view();
  }
  const std::size_t start = found + key.size();
  return value.substr(start, value.find_first_of(" ,", start) - start);
}

}  // namespace

CompareUpdateCommand::CompareUpdateCommand(Parameters* parameters, std::string commandName)
    : CommandBase(parameters), commandName(std::move(commandName)) {}

CompareUpdateCommand::~CompareUpdateCommand() = default;

void CompareUpdateCommand::addSupportedParameters() {
  // One row per line, as the option table reads.
  // clang-format off
  supportedParameters.reserve(supportedParameters.size() + 16);
  tovak::appendRows(supportedParameters, {
      {"-F", "--firmware"},
      {"-D", "--drivers"},
      {"-f", "--force"},
      {"-s", "--select"},
      {"-l", "--local"},
      {"-e", "--exclude"},
      {"-i", "--include"},
      {"-L", "--latest"},
  });
  // Skipping the inventory scan only makes sense when something is flashed.
  if (commandName == "update") {
    tovak::appendRows(supportedParameters, {{"--noinventory", ""}});
  }
  tovak::appendRows(supportedParameters, {
      {"-o", "--linuxoverride"},
      {"--vmware-esxi", ""},
      {"--host", ""},
      {"--update-args", ""},
      {"-m", "--machine-type"},
      {"-u", "--unattended"},
      {"--xml", ""},
  });
  // clang-format on
}

bool CompareUpdateCommand::translateParameters() {
  return tovak::OwnTranslators::translate(*this, tovak::OptionIndex(*parameters));
}

bool tovak::OwnTranslators::translate(CompareUpdateCommand& command, const OptionIndex& index) {
  std::string& commandLine = command.commandLine;
  command.addCommand(command.commandName == "compare" ? "update compare" : "update flash");
  // "--type fw" appended as one text reads exactly like the name-value pair.
  if (!tovak::translateFlag(commandLine, index, "-F", "--firmware", "--type fw") ||
      !tovak::translateFlag(commandLine, index, "-D", "--drivers", "--type dd") ||
      !tovak::translateValued(commandLine, index, "-f", "--force", "--forceid") ||
      !tovak::translateValued(commandLine, index, "-o", "--linuxoverride", "--forceid") ||
      !tovak::translateValued(commandLine, index, "-l", "--local", "--dir")) {
    return false;
  }
  if (tovak::isSetInEitherForm(index, "-s", "--select")) {
    tovak::writeLine(
        "Warning: The parameter -s or --select is not supported by fendix. It will be ignored!");
  }
  const bool excludeAll = tovak::isSetInEitherForm(index, "-e", "--exclude") &&
                          tovak::valueInEitherForm(index, "-e", "--exclude") == "all";
  if (excludeAll) {
    // Excluding everything leaves only the individually chosen updates; "latest" is moot.
    tovak::appendOption(commandLine, "--scope", "individual");
  } else {
    if (!tovak::translateValued(commandLine, index, "-e", "--exclude", "--excludeid ")) {
      return false;
    }
    if (tovak::isSetInEitherForm(index, "-L", "--latest")) {
      const std::string latest(tovak::valueInEitherForm(index, "-L", "--latest"));
      tovak::writeLine(latest);
      if (!latest.empty()) {
        tovak::writeLine(tovak::carryValueMessage("-L", "--latest"));
        return false;
      }
      tovak::appendOption(commandLine, "--scope", "latest");
    }
  }
  if (!tovak::translateValued(commandLine, index, "-i", "--include", "--includeid ") ||
      !tovak::translateFlag(commandLine, index, "--noinventory", "", "--noscan ") ||
      !tovak::translateValued(commandLine, index, "--vmware-esxi", "", "--esxi") ||
      !tovak::translateValued(commandLine, index, "-m", "--machine-type", "--mt") ||
      !tovak::translateFlag(commandLine, index, "--xml", "", "--xml")) {
    return false;
  }
  const std::string_view host = index.valueOf("--host");
  const std::string_view updateArgs = index.valueOf("--update-args");
  const std::string_view user = matchValueIn(updateArgs, "--user=");
  const std::string_view password = matchValueIn(updateArgs, "--password=");
  // A user without a password (or the reverse) cannot log in; the host alone is used.
  if (!host.empty() && !user.empty() && !password.empty()) {
    tovak::appendOption(commandLine, "--vek", tovak::credentialValue(user, password, host));
  } else if (!host.empty()) {
    tovak::appendOption(commandLine, "--vek", host);
  }
  if (updateArgs.find("--backup") != std::string_view::npos) {
    tovak::appendWord(commandLine, "--backup");
  }
  return true;
}

std::string CompareUpdateCommand::getMatchValueFromString(std::string value, std::string key) {
  return std::string(matchValueIn(value, key));
}
