// Pieces of text and checks that several translators share: the two option messages, the
// "user:password@address" value, the rule that credentials need their address, and the
// translation of a flag and of an option with a value, all asked of one index of the line.
#ifndef TOVAK_COMMANDS_OPTION_TEXT_H
#define TOVAK_COMMANDS_OPTION_TEXT_H

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "parameters/option_index.h"
#include "tovak/parameters.h"

namespace tovak {

// Appends one row to a translator's table. Inline, with the names as the literals they are:
// a name that fits in the string's own buffer is then copied by a few moves, not a call.
template <std::size_t FirstSize, std::size_t SecondSize>
inline void appendRow(SupportedParameterTable& table, const char (&first)[FirstSize],
                      const char (&second)[SecondSize]) {
  table.emplace_back(std::piecewise_construct, std::forward_as_tuple(first, FirstSize - 1),
                     std::forward_as_tuple(second, SecondSize - 1));
}

// user ":" password "@" address, joined without blanks.
std::string credentialValue(std::string_view user, std::string_view password,
                            std::string_view address);

// For a line without the address option: credentials alone mean nothing and are refused
// with "The parameter: <address> need specify. "; true when none of them is given.
bool checkNoCredentialsWithoutAddress(const OptionIndex& index, std::string_view address,
                                      std::initializer_list<std::string_view> credentials);

// Appends " text" to a translated line.
void appendWord(std::string& line, std::string_view text);

// Appends " name value" to a translated line, the value in double quotes when it holds a
// blank; nothing else is escaped.
void appendOption(std::string& line, std::string_view name, std::string_view value);

// Print the option's message and give false: "The parameter -x or --xx can not carry value. "
// for a flag given a value, "The parameter value of -x or --xx can not be empty. " for an
// option without one (without " or ..." for an empty second name).
bool refuseCarriedValue(std::string_view parameter1, std::string_view parameter2);
bool refuseEmptyValue(std::string_view parameter1, std::string_view parameter2);

// The two translations below are inline: a translator asks them with literal names, whose
// keys are then worked out at compile time, and most options of a table are absent.

// A legacy flag: appends targetOption when it is given without a value; refuses a value.
inline bool translateFlag(std::string& line, const OptionIndex& index, std::string_view parameter1,
                          std::string_view parameter2, std::string_view targetOption) {
  const OptionIndex::Option *option1 = index.find(parameter1), *option2 = index.find(parameter2);
  if (option1 == nullptr && option2 == nullptr) {
    return true;
  }
  if (!valueInEitherForm(option1, option2, parameter1, parameter2).empty()) {
    return refuseCarriedValue(parameter1, parameter2);
  }
  appendWord(line, targetOption);
  return true;
}

// A legacy option with a value: appends targetOption and the value; refuses an empty value.
inline bool translateValued(std::string& line, const OptionIndex& index,
                            std::string_view parameter1, std::string_view parameter2,
                            std::string_view targetOption) {
  const OptionIndex::Option *option1 = index.find(parameter1), *option2 = index.find(parameter2);
  if (option1 == nullptr && option2 == nullptr) {
    return true;
  }
  const std::string_view value = valueInEitherForm(option1, option2, parameter1, parameter2);
  if (value.empty()) {
    return refuseEmptyValue(parameter1, parameter2);
  }
  appendOption(line, targetOption, value);
  return true;
}

}  // namespace tovak

#endif  // TOVAK_COMMANDS_OPTION_TEXT_H
