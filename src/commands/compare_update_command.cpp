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
  addCommand(commandName == "compare" ? "update compare" : "update flash");
  // "--type fw" appended as one text reads exactly like the name-value pair.
  if (!translateNoValueParameter("-F", "--firmware", "--type fw") ||
      !translateNoValueParameter("-D", "--drivers", "--type dd") ||
      !translateHasValueParameter("-f", "--force", "--forceid") ||
      !translateHasValueParameter("-o", "--linuxoverride", "--forceid") ||
      !translateHasValueParameter("-l", "--local", "--dir")) {
    return false;
  }
  if (parameters->isSetParameter("-s", "--select")) {
    tovak::writeLine(
        "Warning: The parameter -s or --select is not supported by fendix. It will be ignored!");
  }
  const bool excludeAll = parameters->isSetParameter("-e", "--exclude") &&
                          parameters->getParameterValue("-e", "--exclude") == "all";
  if (excludeAll) {
    // Excluding everything leaves only the individually chosen updates; "latest" is moot.
    addParameter("--scope", "individual");
  } else {
    if (!translateHasValueParameter("-e", "--exclude", "--excludeid ")) {
      return false;
    }
    if (parameters->isSetParameter("-L", "--latest")) {
      const std::string latest = parameters->getParameterValue("-L", "--latest");
      tovak::writeLine(latest);
      if (!latest.empty()) {
        tovak::writeLine(tovak::carryValueMessage("-L", "--latest"));
        return false;
      }
      addParameter("--scope", "latest");
    }
  }
  if (!translateHasValueParameter("-i", "--include", "--includeid ") ||
      !translateNoValueParameter("--noinventory", "", "--noscan ") ||
      !translateHasValueParameter("--vmware-esxi", "", "--esxi") ||
      !translateHasValueParameter("-m", "--machine-type", "--mt") ||
      !translateNoValueParameter("--xml", "", "--xml")) {
    return false;
  }
  const std::string host = tovak::longOptionValue(*parameters, "--host");
  const std::string updateArgs = tovak::longOptionValue(*parameters, "--update-args");
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
