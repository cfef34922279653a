#include "parameters/option_index.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/console.h"

namespace tovak {

namespace {

// A bijective scramble of 64 bits, so that every input bit reaches the low bits a slot
// number is taken from.
std::uint64_t scrambled(std::uint64_t bits) {
  bits ^= bits >> 33;
  bits *= 0xff51afd7ed558ccdULL;
  bits ^= bits >> 33;
  bits *= 0xc4ceb9fe1a85ec53ULL;
  return bits ^ (bits >> 33);
}

// Eight bytes at a time, each block scrambled into the seeded state, the last block read
// so that it ends with the name: option names are a few bytes long, and a call into a
// general-purpose hash cost more than the lookup itself.
std::uint64_t hashOf(std::string_view name, std::uint64_t seed) {
  const char* bytes = name.data();
  const std::size_t size = name.size();
  std::uint64_t state = seed ^ size;
  std::uint64_t block = 0;
  if (size >= 8) {
    for (std::size_t at = 0; at + 8 < size; at += 8) {
      std::memcpy(&block, bytes + at, 8);
      state = scrambled(state ^ block);
    }
    std::memcpy(&block, bytes + size - 8, 8);
  } else if (size >= 4) {
    std::uint32_t low;
    std::uint32_t high;
    std::memcpy(&low, bytes, 4);
    std::memcpy(&high, bytes + size - 4, 4);
    block = low | static_cast<std::uint64_t>(high) << 32;
  } else if (size > 0) {
    // With the size in the state, the first, middle and last bytes tell every short name.
    const auto byteAt = [bytes](std::size_t at) {
      return static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[at]));
    };
    block = byteAt(0) | byteAt(size / 2) << 8 | byteAt(size - 1) << 16;
  }
  return scrambled(state ^ block);
}

}  // namespace

bool startsWithDash(std::string_view text) { return !text.empty() && text[0] == '-'; }

bool isSingleDash(std::string_view token) {
  return token.size() >= 2 && token[0] == '-' && token[1] != '-';
}

bool isDoubleDash(std::string_view token) {
  return token.size() >= 2 && token[0] == '-' && token[1] == '-';
}

std::string_view optionNameOf(std::string_view token) {
  if (isSingleDash(token)) {
    return token;
  }
  if (isDoubleDash(token)) {
    return token.substr(0, token.find('='));
  }
  return std::string_view();
}

bool isInTable(std::string_view name, const SupportedParameterTable& table) {
  for (const auto& row : table) {
    if (name == row.first || name == row.second) {
      return true;
    }
  }
  return false;
}

OptionIndex::OptionIndex(const Parameters& parameters)
    : entries_(inlineEntries_),
      slots_(inlineSlots_),
      seed_(reinterpret_cast<std::uintptr_t>(this)) {
  const std::vector<std::string>& tokens = parameters.parameterList;
  std::size_t slotCount = 1;
  while (slotCount < 2 * tokens.size()) {
    slotCount *= 2;  // a power of two, at most half full
  }
  slotMask_ = slotCount - 1;
  if (slotCount > kInlineSlots) {
    heapEntries_ = std::make_unique<Entry[]>(tokens.size());
    heapSlots_ = std::make_unique<std::uint32_t[]>(slotCount);
    entries_ = heapEntries_.get();
    slots_ = heapSlots_.get();
  } else {
    std::fill_n(inlineSlots_, slotCount, 0);  // only the slots this line uses
  }
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const std::string_view token = tokens[i];
    if (!startsWithDash(token)) {
      continue;  // a value
    }
    const std::string_view name = optionNameOf(token);
    Entry& entry = findOrAdd(name);
    if (entry.valued) {
      continue;
    }
    if (isSingleDash(token)) {
      entry.valued = i + 1 < tokens.size() && !startsWithDash(tokens[i + 1]);
      if (entry.valued) entry.value = tokens[i + 1];
    } else if (name.size() < token.size()) {
      entry.valued = true;
      entry.value = token.substr(name.size() + 1);
    }
  }
}

OptionIndex::Option OptionIndex::find(std::string_view name) const {
  // Every name a token gives starts with a dash and a long one holds no "=", so only the
  // empty name of a lone "-" needs turning away here.
  if (name.empty()) {
    return Option{};
  }
  const std::uint32_t taken = slots_[slotFor(name)];
  return taken != 0 ? Option{true, entries_[taken - 1].value} : Option{};
}

OptionIndex::TableCheck OptionIndex::checkAgainst(const SupportedParameterTable& table) {
  TableCheck check;
  for (const auto& row : table) {
    Entry* first = entryNamed(row.first);
    Entry* second = entryNamed(row.second);
    if (first != nullptr) first->listed = true;
    if (second != nullptr) second->listed = true;
    const bool bothValued =
        first != nullptr && second != nullptr && !first->value.empty() && !second->value.empty();
    if (bothValued && check.conflict == nullptr) {
      check.conflict = &row;
    }
  }
  for (std::size_t i = 0; i < entryCount_; ++i) {
    if (!entries_[i].listed) {
      check.unsupported = &entries_[i].name;
      break;
    }
  }
  return check;
}

std::size_t OptionIndex::slotFor(std::string_view name) const {
  std::size_t slot = hashOf(name, seed_) & slotMask_;
  while (slots_[slot] != 0 && entries_[slots_[slot] - 1].name != name) {
    slot = (slot + 1) & slotMask_;
  }
  return slot;
}

OptionIndex::Entry* OptionIndex::entryNamed(std::string_view name) {
  const std::uint32_t taken = slots_[slotFor(name)];
  return taken != 0 ? &entries_[taken - 1] : nullptr;
}

OptionIndex::Entry& OptionIndex::findOrAdd(std::string_view name) {
  const std::size_t slot = slotFor(name);
  if (slots_[slot] == 0) {
    entries_[entryCount_++] = Entry{name, std::string_view(), false, false};
    slots_[slot] = static_cast<std::uint32_t>(entryCount_);
  }
  return entries_[slots_[slot] - 1];
}

bool checkQueryNames(std::string_view parameter1, std::string_view parameter2,
                     const char* noDashMessage) {
  if (parameter1.empty()) {
    writeLine(" The parameter1 should not be empty!");
    return false;
  }
  if (!startsWithDash(parameter1)) {
    writeLine(noDashMessage);
    return false;
  }
  if (!parameter2.empty() && !startsWithDash(parameter2)) {
    writeLine(" The parameter2 should start with dash!");
    return false;
  }
  return true;
}

bool isSetInEitherForm(const OptionIndex& index, std::string_view parameter1,
                       std::string_view parameter2) {
  return index.isSet(parameter1) || index.isSet(parameter2);
}

std::string_view valueInEitherForm(const OptionIndex& index, std::string_view parameter1,
                                   std::string_view parameter2) {
  return valueInEitherForm(index.find(parameter1), index.find(parameter2), parameter1, parameter2);
}

std::string_view valueInEitherForm(const OptionIndex::Option& option1,
                                   const OptionIndex::Option& option2, std::string_view parameter1,
                                   std::string_view parameter2) {
  if (!option1.value.empty() && !option2.value.empty()) {
    const std::string first(parameter1);
    writeLine("Warning: Should not set \"" + first + "\" and \"" + std::string(parameter2) +
              "\" at the same time.");
    writeLine("Using \"" + first + "\" this time.");
  }
  return option1.value.empty() ? option2.value : option1.value;
}

bool checkSupported(OptionIndex& index, const SupportedParameterTable& table) {
  const OptionIndex::TableCheck check = index.checkAgainst(table);
  if (check.unsupported != nullptr) {
    writeText("The parameter: ");
    writeText(*check.unsupported);
    writeText(" is not supported!");
    return false;
  }
  if (check.conflict != nullptr) {
    writeLine("Can not set \"" + check.conflict->first + "\" and \"" + check.conflict->second +
              "\" at the same time.");
    return false;
  }
  return true;
}

}  // namespace tovak
