// Pieces of text and checks that several translators share: the two option messages, the
// "user:password@address" value, the rule that credentials need their address, and the
// translation of a flag and of an option with a value, all asked of one index of the line.
#ifndef TOVAK_COMMANDS_OPTION_TEXT_H
#define TOVAK_COMMANDS_OPTION_TEXT_H

#include <initializer_list>
#include <string>
#include <string_view>

#include "parameters/option_index.h"
#include "tovak/parameters.h"

namespace tovak {

// One row of a translator's supported-option table, as written in its source.
struct OptionRow {
  std::string_view first;
  std::string_view second;
};

// Appends the rows, in order, to the table.
void appendRows(SupportedParameterTable& table, std::initializer_list<OptionRow> rows);

// "The parameter -x or --xx can not carry value. " (without " or ..." for an empty second name).
std::string carryValueMessage(const std::string& parameter1, const std::string& parameter2);

// "The parameter value of -x or --xx can not be empty. " (likewise).
std::string emptyValueMessage(const std::string& parameter1, const std::string& parameter2);

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

// A legacy flag: appends targetOption when it is given without a value; refuses a value.
bool translateFlag(std::string& line, const OptionIndex& index, std::string_view parameter1,
                   std::string_view parameter2, std::string_view targetOption);

// A legacy option with a value: appends targetOption and the value; refuses an empty value.
bool translateValued(std::string& line, const OptionIndex& index, std::string_view parameter1,
                     std::string_view parameter2, std::string_view targetOption);

}  // namespace tovak

#endif  // TOVAK_COMMANDS_OPTION_TEXT_H
