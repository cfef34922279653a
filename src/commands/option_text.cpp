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

bool checkNoCredentialsWithoutAddress(const OptionIndex& index, std::string_view address,
                                      std::initializer_list<std::string_view> credentials) {
  for (const std::string_view credential : credentials) {
    if (index.isSet(credential)) {
      writeLine("The parameter: " + std::string(address) + " need specify. ");
      return false;
    }
  }
  return true;
}

bool translateFlag(CommandBase& command, const OptionIndex& index, std::string_view parameter1,
                   std::string_view parameter2, std::string_view targetOption) {
  const OptionIndex::Option option1 = index.find(parameter1), option2 = index.find(parameter2);
  if (!option1.set && !option2.set) {
    return true;
  }
  if (!valueInEitherForm(option1, option2, parameter1, parameter2).empty()) {
    writeLine(carryValueMessage(std::string(parameter1), std::string(parameter2)));
    return false;
  }
  command.addParameter(std::string(targetOption));
  return true;
}

bool translateValued(CommandBase& command, const OptionIndex& index, std::string_view parameter1,
                     std::string_view parameter2, std::string_view targetOption) {
  const OptionIndex::Option option1 = index.find(parameter1), option2 = index.find(parameter2);
  if (!option1.set && !option2.set) {
    return true;
  }
  const std::string_view value = valueInEitherForm(option1, option2, parameter1, parameter2);
  if (value.empty()) {
    writeLine(emptyValueMessage(std::string(parameter1), std::string(parameter2)));
    return false;
  }
  command.addParameter(std::string(targetOption), std::string(value));
  return true;
}

}  // namespace tovak
