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
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tovak/parameters.h"

namespace tovak {

inline bool startsWithDash(std::string_view text) { return !text.empty() && text[0] == '-'; }

inline bool isSingleDash(std::string_view token) {
  return token.size() >= 2 && token[0] == '-' && token[1] != '-';
}

inline bool isDoubleDash(std::string_view token) {
  return token.size() >= 2 && token[0] == '-' && token[1] == '-';
}

// The option name a token gives: "" for a value, and for a lone "-".
inline std::string_view optionNameOf(std::string_view token) {
  if (isSingleDash(token)) {
    return token;
  }
  if (isDoubleDash(token)) {
    return token.substr(0, token.find('='));
  }
  return std::string_view();
}

// Whether the name is one of the table's, in either column.
bool isInTable(std::string_view name, const SupportedParameterTable& table);

class OptionIndex {
 public:
  // What the line says about an option name that some token gives: its first value, ""
  // when it has none. Plain fields, so that an index's inline entries cost nothing until
  // a name is added.
  struct Option {
    const char* data;
    std::size_t size;
    std::string_view value() const { return std::string_view(data, size); }
  };
  // The value of an option that may be absent: "" for nullptr.
  static std::string_view valueOf(const Option* option) {
    return option != nullptr ? option->value() : std::string_view();
  }

  // Reads the parameters' tokens, which must outlive the index.
  explicit OptionIndex(const Parameters& parameters);
  OptionIndex(const OptionIndex&) = delete;
  OptionIndex& operator=(const OptionIndex&) = delete;

  // nullptr when no token names the option. A name that no token can give (empty, without
  // a dash, a long name with "=", a lone "-") is never set.
  const Option* find(std::string_view name) const {
    const Entry* entry = name.empty() ? nullptr : entryOf(name);
    return entry != nullptr ? &entry->option : nullptr;
  }
  bool isSet(std::string_view name) const { return find(name) != nullptr; }
  std::string_view valueOf(std::string_view name) const { return valueOf(find(name)); }
  // How the line stands against a table, from two lookups per row: the first option name,
  // in the order of the tokens, that the table has in neither column (a lone "-" stands for
  // the empty name here), and the first row whose two forms both carry a value; nullptr for
  // none of either. Made once per index: it marks the names it finds.
  struct TableCheck {
    std::optional<std::string_view> unsupported;
    const SupportedParameterTable::value_type* conflict = nullptr;
  };
  TableCheck checkAgainst(const SupportedParameterTable& table);

 private:
  // A name as the table compares it: its size and two words read from it. For a name of at
  // most 16 bytes the three tell it whole, so that finding it costs three comparisons and
  // no call; a longer one has its middle folded into the first word and is compared byte
  // for byte as well.
  struct Key {
    std::size_t size;
    std::uint64_t low;
    std::uint64_t high;
  };
  struct Entry {
    Key key;
    const char* name;
    Option option;
    bool valued;
    bool listed;  // found in the table of the check
  };
  // Slots at most a quarter full: a name the line lacks mostly meets an empty slot at once.
  static constexpr std::size_t kSlotsPerToken = 4;
  // A typical line's slots and entries fit inline and need no allocation.
  static constexpr std::size_t kInlineSlots = 128;
  // Names up to this size are told apart by their key alone.
  static constexpr std::size_t kWholeKeyBytes = 16;

  // The slot that holds the name, or the empty one where it would go. Every question comes
  // down to this, so it is inline and makes no call for a short name.
  std::size_t slotFor(const Key& key, std::string_view name) const {
    std::size_t slot = slotOf(key);
    for (; slots_[slot] != 0; slot = (slot + 1) & slotMask_) {
      const Key& held = entries_[slots_[slot] - 1].key;
      if (held.low == key.low && held.high == key.high && held.size == key.size &&
          (key.size <= kWholeKeyBytes || sameLongName(entries_[slots_[slot] - 1], name))) {
        break;
      }
    }
    return slot;
  }
  const Entry* entryOf(std::string_view name) const {
    const std::uint32_t taken = slots_[slotFor(keyOf(name), name)];
    return taken != 0 ? &entries_[taken - 1] : nullptr;
  }
  // The same for the check, which marks what it finds; the empty name is a table's empty
  // column, which only a lone "-" gives.
  Entry* entryNamed(std::string_view name) {
    return const_cast<Entry*>(name.empty() ? emptyName_ : entryOf(name));
  }
  static Key keyOf(std::string_view name) {
    const char* bytes = name.data();
    const std::size_t size = name.size();
    // Two loads that overlap where the name is shorter than both: every byte is read.
    if (size >= 8) {
      return size > kWholeKeyBytes
                 ? keyOfLongName(name)
                 : Key{size, wordAt<std::uint64_t>(bytes), wordAt<std::uint64_t>(bytes + size - 8)};
    }
    if (size >= 4) {
      return Key{size, wordAt<std::uint32_t>(bytes), wordAt<std::uint32_t>(bytes + size - 4)};
    }
    if (size >= 2) {
      return Key{size, wordAt<std::uint16_t>(bytes), wordAt<std::uint16_t>(bytes + size - 2)};
    }
    // No token gives a one-byte name; the empty one of a lone "-" is added under this key
    // and found by the check without it.
    return Key{size, 0, 0};
  }
  // Multiply and shift: the top bits of the product depend on every bit of the key.
  std::size_t slotOf(const Key& key) const {
    std::uint64_t mixed = (key.low ^ seed_) * 0x9e3779b97f4a7c15ULL;
    mixed ^= (mixed >> 29) ^ key.high ^ key.size;
    return static_cast<std::size_t>((mixed * 0xc4ceb9fe1a85ec53ULL) >> slotShift_);
  }
  template <typename Word>
  static std::uint64_t wordAt(const char* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
  }
  static Key keyOfLongName(std::string_view name);
  static bool sameLongName(const Entry& entry, std::string_view name);
  Entry& findOrAdd(std::string_view name);

  Entry* entries_;  // one per name, in the order the names first appear
  std::size_t entryCount_ = 0;
  Entry* emptyName_ = nullptr;
  std::uint32_t* slots_;  // open addressing: 1 + an index into entries_, or 0
  unsigned slotShift_;    // 64 less the number of bits a slot number has
  std::size_t slotMask_;
  std::uint64_t seed_;  // differs from run to run: a line cannot be built to collide
  Entry inlineEntries_[kInlineSlots / kSlotsPerToken];  // never more names than tokens
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
std::string_view valueInEitherForm(const OptionIndex::Option* option1,
                                   const OptionIndex::Option* option2, std::string_view parameter1,
                                   std::string_view parameter2);

// Every option token is in the table and no row carries values in both forms; otherwise
// says which and gives false. The unsupported name is printed without a line end and left
// unflushed, as scripts have always seen it.
bool checkSupported(OptionIndex& index, const SupportedParameterTable& table);

}  // namespace tovak

#endif  // TOVAK_PARAMETERS_OPTION_INDEX_H
