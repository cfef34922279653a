// What the translators share beyond CommandBase: their option rows translated in order, the
// refusal of a flag that carries a value, and the credentials that travel as one value.
#ifndef TOVAK_COMMANDS_OPTION_TEXT_H
#define TOVAK_COMMANDS_OPTION_TEXT_H

#include <initializer_list>
#include <string>
#include <string_view>

#include "tovak/command_base.h"
#include "tovak/parameters.h"

namespace tovak {

// One legacy option in its two forms and the Fendix text it becomes: a flag's text alone,
// or an option's name followed by its value.
struct OptionTranslation {
  const char* first;
  const char* second;
  const char* target;
  bool takesValue;
};

// Translates each row in order; false at the first that fails, which has said why.
bool translateEach(CommandBase& command, std::initializer_list<OptionTranslation> rows);

// Print the option's message and give false: "The parameter -x or --xx can not carry value. "
// for a flag given a value, "The parameter value of -x or --xx can not be empty. " for an
// option without one (without " or ..." for an empty second name).
bool refuseCarriedValue(const std::string& parameter1, const std::string& parameter2);
bool refuseEmptyValue(const std::string& parameter1, const std::string& parameter2);

// user ":" password "@" address, joined without blanks.
std::string credentialValue(std::string_view user, std::string_view password,
                            std::string_view address);

// For a line without the address option: credentials alone mean nothing and are refused
// with "The parameter: <address> need specify. "; true when none of them is given.
bool checkNoCredentialsWithoutAddress(Parameters& parameters, const std::string& address,
                                      std::initializer_list<const char*> credentials);

}  // namespace tovak

#endif  // TOVAK_COMMANDS_OPTION_TEXT_H
