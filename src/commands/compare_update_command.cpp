#include "tovak/compare_update_command.h"

#include <string>
#include <utility>

#include "commands/option_text.h"
#include "platform/console.h"

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
  const tovak::OptionIndex index(*parameters);
  addCommand(commandName == "compare" ? "update compare" : "update flash");
  // "--type fw" appended as one text reads exactly like the name-value pair.
  if (!tovak::translateFlag(*this, index, "-F", "--firmware", "--type fw") ||
      !tovak::translateFlag(*this, index, "-D", "--drivers", "--type dd") ||
      !tovak::translateValued(*this, index, "-f", "--force", "--forceid") ||
      !tovak::translateValued(*this, index, "-o", "--linuxoverride", "--forceid") ||
      !tovak::translateValued(*this, index, "-l", "--local", "--dir")) {
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
    addParameter("--scope", "individual");
  } else {
    if (!tovak::translateValued(*this, index, "-e", "--exclude", "--excludeid ")) {
      return false;
    }
    if (tovak::isSetInEitherForm(index, "-L", "--latest")) {
      const std::string latest(tovak::valueInEitherForm(index, "-L", "--latest"));
      tovak::writeLine(latest);
      if (!latest.empty()) {
        tovak::writeLine(tovak::carryValueMessage("-L", "--latest"));
        return false;
      }
      addParameter("--scope", "latest");
    }
  }
  if (!tovak::translateValued(*this, index, "-i", "--include", "--includeid ") ||
      !tovak::translateFlag(*this, index, "--noinventory", "", "--noscan ") ||
      !tovak::translateValued(*this, index, "--vmware-esxi", "", "--esxi") ||
      !tovak::translateValued(*this, index, "-m", "--machine-type", "--mt") ||
      !tovak::translateFlag(*this, index, "--xml", "", "--xml")) {
    return false;
  }
  const std::string host(index.valueOf("--host"));
  const std::string updateArgs(index.valueOf("--update-args"));
  std::string user;
  std::string password;
  if (!updateArgs.empty()) {
    user = getMatchValueFromString(updateArgs, "--user=");
    password = getMatchValueFromString(updateArgs, "--password=");
  }
  // A user without a password (or the reverse) cannot log in; the host alone is used.
  const bool withCredentials = !host.empty() && !user.empty() && !password.empty();
  const std::string target = withCredentials ? tovak::credentialValue(user, password, host) : host;
  if (!target.empty()) {
    addParameter("--vek", target);
  }
  if (updateArgs.find("--backup") != std::string::npos) {
    addParameter("--backup");
  }
  return true;
}

std::string CompareUpdateCommand::getMatchValueFromString(std::string value, std::string key) {
  const std::size_t found = value.find(key);
  if (found == std::string::npos) {
    return std::string();
  }
  // Items are separated by blanks or commas: the match ends at the first of either.
  const std::size_t start = found + key.size();
  return value.substr(start, value.find_first_of(" ,", start) - start);
}
