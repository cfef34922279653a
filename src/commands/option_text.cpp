#include "commands/option_text.h"

#include <string>

#include "platform/console.h"

namespace tovak {

namespace {

std::string bothNames(const std::string& parameter1, const std::string& parameter2) {
  return parameter2.empty() ? parameter1 : parameter1 + " or " + parameter2;
}

}  // namespace

bool translateEach(CommandBase& command, std::initializer_list<OptionTranslation> rows) {
  for (const OptionTranslation& row : rows) {
    const bool translated =
        row.takesValue ? command.translateHasValueParameter(row.first, row.second, row.target)
                       : command.translateNoValueParameter(row.first, row.second, row.target);
    if (!translated) {
      return false;
    }
  }
  return true;
}

bool refuseCarriedValue(const std::string& parameter1, const std::string& parameter2) {
  writeLine("The parameter " + bothNames(parameter1, parameter2) + " can not carry value. ");
  return false;
}

bool refuseEmptyValue(const std::string& parameter1, const std::string& parameter2) {
  writeLine("The parameter value of " + bothNames(parameter1, parameter2) + " can not be empty. ");
  return false;
}

std::string credentialValue(std::string_view user, std::string_view password,
                            std::string_view address) {
  std::string value(user);
  value.append(1, ':').append(password).append(1, '@').append(address);
  return value;
}

bool checkNoCredentialsWithoutAddress(Parameters& parameters, const std::string& address,
                                      std::initializer_list<const char*> credentials) {
  for (const char* credential : credentials) {
    if (parameters.isSetParameter(credential, "")) {
      writeLine("The parameter: " + address + " need specify. ");
      return false;
    }
  }
  return true;
}

}  // namespace tovak
