#include "tovak/compare_update_command.h"

#include <string>
#include <string_view>
#include <utility>

#include "commands/option_text.h"
#include "platform/console.h"

namespace {

// The text after key in value, up to the next blank or comma; "" when key is absent.
std::string_view matchValueIn(std::string_view value, std::string_view key) {
  const std::size_t found = value.find(key);
  if (found == std::string_view::npos) {
    return std::string_view();
  }
  const std::string_view rest = value.substr(found + key.size());
  return rest.substr(0, rest.find_first_of(" ,"));
}

// "-e all" chooses the updates one by one, so "latest" means nothing next to it and is not
// read; any other exclusion is translated, and "-L" after it.
bool translateScope(CommandBase& command, Parameters& parameters) {
  if (parameters.isSetParameter("-e", "--exclude") &&
      parameters.getParameterValue("-e", "--exclude") == "all") {
    command.addParameter("--scope", "individual");
    return true;
  }
  if (!command.translateHasValueParameter("-e", "--exclude", "--excludeid ")) {
    return false;
  }
  if (!parameters.isSetParameter("-L", "--latest")) {
    return true;
  }
  // The value is printed, even an empty one, before it is refused.
  const std::string latest = parameters.getParameterValue("-L", "--latest");
  tovak::writeLine(latest);
  if (!latest.empty()) {
    return tovak::refuseCarriedValue("-L", "--latest");
  }
  command.addParameter("--scope", "latest");
  return true;
}

}  // namespace

CompareUpdateCommand::CompareUpdateCommand(Parameters* parameters, std::string commandName)
    : CommandBase(parameters), commandName(std::move(commandName)) {}

CompareUpdateCommand::~CompareUpdateCommand() = default;

void CompareUpdateCommand::addSupportedParameters() {
  supportedParameters.insert(supportedParameters.end(),
                             {{"-F", "--firmware"}, {"-D", "--drivers"}, {"-f", "--force"},
                              {"-s", "--select"}, {"-l", "--local"}, {"-e", "--exclude"},
                              {"-i", "--include"}, {"-L", "--latest"}});
  // Skipping the inventory scan only makes sense when something is flashed.
  if (commandName == "update") {
    supportedParameters.emplace_back("--noinventory", "");
  }
  supportedParameters.insert(supportedParameters.end(),
                             {{"-o", "--linuxoverride"}, {"--vmware-esxi", ""}, {"--host", ""},
                              {"--update-args", ""}, {"-m", "--machine-type"},
                              {"-u", "--unattended"}, {"--xml", ""}});
}

bool CompareUpdateCommand::translateParameters() {
  addCommand(commandName == "compare" ? "update compare" : "update flash");
  if (!tovak::translateEach(*this, {{"-F", "--firmware", "--type fw", false},
                                    {"-D", "--drivers", "--type dd", false},
                                    {"-f", "--force", "--forceid", true},
                                    {"-o", "--linuxoverride", "--forceid", true},
                                    {"-l", "--local", "--dir", true}})) {
    return false;
  }
  if (parameters->isSetParameter("-s", "--select")) {
    tovak::writeLine(
        "Warning: The parameter -s or --select is not supported by fendix. It will be ignored!");
  }
  if (!translateScope(*this, *parameters) ||
      !tovak::translateEach(*this, {{"-i", "--include", "--includeid ", true},
                                    {"--noinventory", "", "--noscan ", false},
                                    {"--vmware-esxi", "", "--esxi", true},
                                    {"-m", "--machine-type", "--mt", true},
                                    {"--xml", "", "--xml", false}})) {
    return false;
  }
  const std::string host = parameters->getParameterValue("--host", "");
  const std::string updateArgs = parameters->getParameterValue("--update-args", "");
  const std::string_view user = matchValueIn(updateArgs, "--user=");
  const std::string_view password = matchValueIn(updateArgs, "--password=");
  // A user without a password (or the reverse) cannot log in; the host alone is used.
  if (!host.empty()) {
    addParameter("--vek", !user.empty() && !password.empty()
                              ? tovak::credentialValue(user, password, host)
                              : host);
  }
  if (updateArgs.find("--backup") != std::string::npos) {
    addParameter("--backup");
  }
  return true;
}

std::string CompareUpdateCommand::getMatchValueFromString(std::string value, std::string key) {
  return std::string(matchValueIn(value, key));
}
