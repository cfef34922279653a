#include "parameters/option_index.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/console.h"

namespace tovak {

namespace {

// A bijective scramble of 64 bits, so that every input bit reaches every output bit.
std::uint64_t scrambled(std::uint64_t bits) {
  bits ^= bits >> 33;
  bits *= 0xff51afd7ed558ccdULL;
  bits ^= bits >> 33;
  bits *= 0xc4ceb9fe1a85ec53ULL;
  return bits ^ (bits >> 33);
}

}  // namespace

bool isInTable(std::string_view name, const SupportedParameterTable& table) {
  for (const auto& row : table) {
    if (name == row.first || name == row.second) {
      return true;
    }
  }
  return false;
}

OptionIndex::Key OptionIndex::keyOfLongName(std::string_view name) {
  // The first and the last eight bytes, with the middle folded into the first word, so that
  // names alike at both ends still spread; equal keys are then compared byte for byte.
  const char* bytes = name.data();
  const std::size_t size = name.size();
  std::uint64_t low = wordAt<std::uint64_t>(bytes);
  for (std::size_t at = 8; at + 8 < size; at += 8) {
    low = scrambled(low ^ wordAt<std::uint64_t>(bytes + at));
  }
  return Key{size, low, wordAt<std::uint64_t>(bytes + size - 8)};
}

bool OptionIndex::sameLongName(const Entry& entry, std::string_view name) {
  return std::memcmp(entry.name, name.data(), name.size()) == 0;
}

OptionIndex::OptionIndex(const Parameters& parameters)
    : entries_(inlineEntries_),
      slots_(inlineSlots_),
      seed_(scrambled(reinterpret_cast<std::uintptr_t>(this))) {
  const std::vector<std::string>& tokens = parameters.parameterList;
  unsigned bits = 1;
  while ((std::size_t{1} << bits) < kSlotsPerToken * tokens.size()) {
    ++bits;
  }
  const std::size_t slotCount = std::size_t{1} << bits;
  slotShift_ = 64 - bits;
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
    if (name.empty()) {
      emptyName_ = &entry;
    }
    if (entry.valued) {
      continue;
    }
    std::string_view value;
    if (isSingleDash(token)) {
      entry.valued = i + 1 < tokens.size() && !startsWithDash(tokens[i + 1]);
      if (entry.valued) value = tokens[i + 1];
    } else if (name.size() < token.size()) {
      entry.valued = true;
      value = token.substr(name.size() + 1);
    }
    entry.option = Option{value.data(), value.size()};
  }
}

OptionIndex::TableCheck OptionIndex::checkAgainst(const SupportedParameterTable& table) {
  TableCheck check;
  for (const auto& row : table) {
    Entry* first = entryNamed(row.first);
    Entry* second = entryNamed(row.second);
    if (first != nullptr) first->listed = true;
    if (second != nullptr) second->listed = true;
    const bool bothValued = first != nullptr && second != nullptr && first->option.size != 0 &&
                            second->option.size != 0;
    if (bothValued && check.conflict == nullptr) {
      check.conflict = &row;
    }
  }
  for (std::size_t i = 0; i < entryCount_; ++i) {
    if (!entries_[i].listed) {
      check.unsupported = std::string_view(entries_[i].name, entries_[i].key.size);
      break;
    }
  }
  return check;
}

OptionIndex::Entry& OptionIndex::findOrAdd(std::string_view name) {
  const Key key = keyOf(name);
  const std::size_t slot = slotFor(key, name);
  if (slots_[slot] == 0) {
    // Its value is filled in by the constructor, from the tokens.
    Entry& added = entries_[entryCount_++];
    added.key = key;
    added.name = name.data();
    added.valued = false;
    added.listed = false;
    slots_[slot] = static_cast<std::uint32_t>(entryCount_);
    return added;
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

std::string_view valueInEitherForm(const OptionIndex::Option* option1,
                                   const OptionIndex::Option* option2, std::string_view parameter1,
                                   std::string_view parameter2) {
  const std::string_view value1 = OptionIndex::valueOf(option1);
  const std::string_view value2 = OptionIndex::valueOf(option2);
  if (!value1.empty() && !value2.empty()) {
    const std::string first(parameter1);
    writeLine("Warning: Should not set \"" + first + "\" and \"" + std::string(parameter2) +
              "\" at the same time.");
    writeLine("Using \"" + first + "\" this time.");
  }
  return value1.empty() ? value2 : value1;
}

bool checkSupported(OptionIndex& index, const SupportedParameterTable& table) {
  const OptionIndex::TableCheck check = index.checkAgainst(table);
  if (check.unsupported) {
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
