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

std::string credentialValue(std::string_view user, std::string_view password,
                            std::string_view address) {
  std::string value;
  value.reserve(user.size() + password.size() + address.size() + 2);
  value.append(user).append(1, ':').append(password).append(1, '@').append(address);
  return value;
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

void appendWord(std::string& line, std::string_view text) {
  line += ' ';
  line += text;
}

void appendOption(std::string& line, std::string_view name, std::string_view value) {
  // Only the blank decides: the shell gets the value as one word, nothing else is escaped.
  const bool quoted = value.find(' ') != std::string_view::npos;
  appendWord(line, name);
  line += ' ';
  if (quoted) line += '"';
  line += value;
  if (quoted) line += '"';
}

bool translateFlag(std::string& line, const OptionIndex& index, std::string_view parameter1,
                   std::string_view parameter2, std::string_view targetOption) {
  const OptionIndex::Option *option1 = index.find(parameter1), *option2 = index.find(parameter2);
  if (option1 == nullptr && option2 == nullptr) {
    return true;
  }
  if (!valueInEitherForm(option1, option2, parameter1, parameter2).empty()) {
    writeLine(carryValueMessage(std::string(parameter1), std::string(parameter2)));
    return false;
  }
  appendWord(line, targetOption);
  return true;
}

bool translateValued(std::string& line, const OptionIndex& index, std::string_view parameter1,
                     std::string_view parameter2, std::string_view targetOption) {
  const OptionIndex::Option *option1 = index.find(parameter1), *option2 = index.find(parameter2);
  if (option1 == nullptr && option2 == nullptr) {
    return true;
  }
  const std::string_view value = valueInEitherForm(option1, option2, parameter1, parameter2);
  if (value.empty()) {
    writeLine(emptyValueMessage(std::string(parameter1), std::string(parameter2)));
    return false;
  }
  appendOption(line, targetOption, value);
  return true;
}

}  // namespace tovak
