// The option tokens of a line indexed by option name, built in one pass over the tokens, so
// that each question a translation asks costs the same whatever the number of tokens.
//
// A token names an option by its whole text when it starts with one dash ("-m", "-m=5"),
// and by the text before its first "=" when it starts with two ("--os=x" names "--os").
// A short option's value is the next token when that token has no leading dash (the last
// token is never taken as the option); a long option's value is the text after its "=".
// Where an option stands more than once, its first value counts, even an empty one.
#ifndef TOVAK_PARAMETERS_OPTION_INDEX_H
#define TOVAK_PARAMETERS_OPTION_INDEX_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tovak/parameters.h"

namespace tovak {

bool startsWithDash(std::string_view text);
bool isSingleDash(std::string_view token);
bool isDoubleDash(std::string_view token);

// The option name a token gives: "" for a value, and for a lone "-".
std::string_view optionNameOf(std::string_view token);

// Whether the name is one of the table's, in either column.
bool isInTable(std::string_view name, const SupportedParameterTable& table);

class OptionIndex {
 public:
  // What the line says about one option name.
  struct Option {
    bool set = false;        // some token names it
    std::string_view value;  // its first value, "" when it has none
  };

  // Reads the parameters' tokens, which must outlive the index.
  explicit OptionIndex(const Parameters& parameters);
  OptionIndex(const OptionIndex&) = delete;
  OptionIndex& operator=(const OptionIndex&) = delete;

  // A name that no token can give (empty, without a dash, a long name with "=", a lone
  // "-") is never set.
  Option find(std::string_view name) const;
  bool isSet(std::string_view name) const { return find(name).set; }
  std::string_view valueOf(std::string_view name) const { return find(name).value; }
  // How the line stands against a table, from two lookups per row: the first option name,
  // in the order of the tokens, that the table has in neither column (a lone "-" stands for
  // the empty name here), and the first row whose two forms both carry a value; nullptr for
  // none. Made once per index: it marks the names it finds.
  struct TableCheck {
    const std::string_view* unsupported = nullptr;
    const SupportedParameterTable::value_type* conflict = nullptr;
  };
  TableCheck checkAgainst(const SupportedParameterTable& table);

 private:
  struct Entry {
    std::string_view name;
    std::string_view value;
    bool valued;
    bool listed;  // found in the table of the check
  };
  // A typical line's slots fit here and need no allocation.
  static constexpr std::size_t kInlineSlots = 64;

  // The slot that holds the name, or the empty one where it would go.
  std::size_t slotFor(std::string_view name) const;
  Entry& findOrAdd(std::string_view name);
  // The entry of a token's option name, compared byte for byte; nullptr when none.
  Entry* entryNamed(std::string_view name);

  Entry* entries_;  // one per name, in the order the names first appear
  std::size_t entryCount_ = 0;
  std::uint32_t* slots_;  // open addressing: 1 + an index into entries_, or 0
  std::size_t slotMask_;
  std::size_t seed_;  // differs from run to run, so that no line can be made to collide
  Entry inlineEntries_[kInlineSlots];  // never more names than slots
  std::uint32_t inlineSlots_[kInlineSlots];
  std::unique_ptr<Entry[]> heapEntries_;
  std::unique_ptr<std::uint32_t[]> heapSlots_;
};

// The option-name arguments of a query from outside: parameter1 a dashed name, parameter2
// empty or dashed. Anything else is reported, with the query's own wording for a dashless
// parameter1, and gives false.
bool checkQueryNames(std::string_view parameter1, std::string_view parameter2,
                     const char* noDashMessage);
// The wordings for a dashless parameter1: isSetParameter's, and getParameterValue's.
inline constexpr const char* kSetQueryDashless = " The parameter should start with dash!";
inline constexpr const char* kValueQueryDashless = " The parameter1 should start with dash!";

// Whether the option is given in either form.
bool isSetInEitherForm(const OptionIndex& index, std::string_view parameter1,
                       std::string_view parameter2);

// The option's value in either form; parameter1's wins, with a warning when both have one.
std::string_view valueInEitherForm(const OptionIndex& index, std::string_view parameter1,
                                   std::string_view parameter2);
// The same for the two forms already looked up.
std::string_view valueInEitherForm(const OptionIndex::Option& option1,
                                   const OptionIndex::Option& option2, std::string_view parameter1,
                                   std::string_view parameter2);

// Every option token is in the table and no row carries values in both forms; otherwise
// says which and gives false. The unsupported name is printed without a line end and left
// unflushed, as scripts have always seen it.
bool checkSupported(OptionIndex& index, const SupportedParameterTable& table);

}  // namespace tovak

#endif  // TOVAK_PARAMETERS_OPTION_INDEX_H
