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

std::string carryValueMessage(const std::string& parameter1, const std::string& parameter2) {
  return "The parameter " + bothNames(parameter1, parameter2) + " can not carry value. ";
}

std::string emptyValueMessage(const std::string& parameter1, const std::string& parameter2) {
  return "The parameter value of " + bothNames(parameter1, parameter2) + " can not be empty. ";
}

}  // namespace

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

bool refuseCarriedValue(std::string_view parameter1, std::string_view parameter2) {
  writeLine(carryValueMessage(std::string(parameter1), std::string(parameter2)));
  return false;
}

bool refuseEmptyValue(std::string_view parameter1, std::string_view parameter2) {
  writeLine(emptyValueMessage(std::string(parameter1), std::string(parameter2)));
  return false;
}

}  // namespace tovak
