#include "commands/option_text.h"

#include <string>
#include <tuple>
#include <utility>

#include "platform/console.h"

namespace tovak {

namespace {

std::string bothNames(const std::string& parameter1, const std::string& parameter2) {
  return parameter2.empty() ? parameter1 : parameter1 + " or " + parameter2;
}

}  // namespace

void appendRows(SupportedParameterTable& table, std::initializer_list<OptionRow> rows) {
  table.reserve(table.size() + rows.size());
  for (const OptionRow& row : rows) {
    table.emplace_back(std::piecewise_construct, std::forward_as_tuple(row.first),
                       std::forward_as_tuple(row.second));
  }
}

std::string carryValueMessage(const std::string& parameter1, const std::string& parameter2) {
  return "The parameter " + bothNames(parameter1, parameter2) + " can not carry value. ";
}

std::string emptyValueMessage(const std::string& parameter1, const std::string& parameter2) {
  return "The parameter value of " + bothNames(parameter1, parameter2) + " can not be empty. ";
}

std::string credentialValue(const std::string& user, const std::string& password,
                            const std::string& address) {
  return user + ":" + password + "@" + address;
}

std::string longOptionValue(Parameters& parameters, const std::string& name) {
  return parameters.getParameterValue(name, std::string());
}

bool checkNoCredentialsWithoutAddress(Parameters& parameters, const std::string& address,
                                      std::initializer_list<const char*> credentials) {
  for (const char* credential : credentials) {
    if (parameters.isSetParameter(credential, std::string())) {
      writeLine("The parameter: " + address + " need specify. ");
      return false;
    }
  }
  return true;
}

}  // namespace tovak
