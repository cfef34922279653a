#include "tovak/compare_update_command.h"

#include <algorithm>
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
  const std::string_view rest = value.substr(found + key.size());
  // Not find_first_of(), which calls memchr() on the two stop characters for every byte.
  const auto end =
      std::find_if(rest.begin(), rest.end(), [](char c) { return c == ' ' || c == ','; });
  return rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
}

}  // namespace

CompareUpdateCommand::CompareUpdateCommand(Parameters* parameters, std::string commandName)
    : CommandBase(parameters), commandName(std::move(commandName)) {}

CompareUpdateCommand::~CompareUpdateCommand() = default;

void CompareUpdateCommand::addSupportedParameters() {
  supportedParameters.reserve(supportedParameters.size() + 16);
  tovak::appendRow(supportedParameters, "-F", "--firmware");
  tovak::appendRow(supportedParameters, "-D", "--drivers");
  tovak::appendRow(supportedParameters, "-f", "--force");
  tovak::appendRow(supportedParameters, "-s", "--select");
  tovak::appendRow(supportedParameters, "-l", "--local");
  tovak::appendRow(supportedParameters, "-e", "--exclude");
  tovak::appendRow(supportedParameters, "-i", "--include");
  tovak::appendRow(supportedParameters, "-L", "--latest");
  // Skipping the inventory scan only makes sense when something is flashed.
  if (commandName == "update") {
    tovak::appendRow(supportedParameters, "--noinventory", "");
  }
  tovak::appendRow(supportedParameters, "-o", "--linuxoverride");
  tovak::appendRow(supportedParameters, "--vmware-esxi", "");
  tovak::appendRow(supportedParameters, "--host", "");
  tovak::appendRow(supportedParameters, "--update-args", "");
  tovak::appendRow(supportedParameters, "-m", "--machine-type");
  tovak::appendRow(supportedParameters, "-u", "--unattended");
  tovak::appendRow(supportedParameters, "--xml", "");
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
        return tovak::refuseCarriedValue("-L", "--latest");
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
