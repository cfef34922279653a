#include "parameters/option_index.h"

#include <bits/hash_bytes.h>

#include <string>

#include "platform/console.h"

namespace tovak {

namespace {

bool namesAnOption(std::string_view name) {
  return isSingleDash(name) || (isDoubleDash(name) && name.find('=') == std::string_view::npos);
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
  if (!namesAnOption(name)) {
    return Option{};
  }
  const std::uint32_t taken = slots_[slotFor(name)];
  return taken != 0 ? Option{true, entries_[taken - 1].value} : Option{};
}

const std::string_view* OptionIndex::firstUnsupported(const SupportedParameterTable& table) const {
  for (std::size_t i = 0; i < entryCount_; ++i) {
    if (!isInTable(entries_[i].name, table)) {
      return &entries_[i].name;
    }
  }
  return nullptr;
}

// The hash libstdc++ gives std::string, seeded per index.
std::size_t OptionIndex::hashOf(std::string_view name) const {
  return std::_Hash_bytes(name.data(), name.size(), seed_);
}

std::size_t OptionIndex::slotFor(std::string_view name) const {
  std::size_t slot = hashOf(name) & slotMask_;
  while (slots_[slot] != 0 && entries_[slots_[slot] - 1].name != name) {
    slot = (slot + 1) & slotMask_;
  }
  return slot;
}

OptionIndex::Entry& OptionIndex::findOrAdd(std::string_view name) {
  const std::size_t slot = slotFor(name);
  if (slots_[slot] == 0) {
    entries_[entryCount_++] = Entry{name, std::string_view(), false};
    slots_[slot] = static_cast<std::uint32_t>(entryCount_);
  }
  return entries_[slots_[slot] - 1];
}

bool checkQueryNames(std::string_view parameter1, std::string_view parameter2,
                     std::string_view noDashMessage) {
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
  return valueInEitherForm(index.find(parameter1), index.find(parameter2), parameter1,
                           parameter2);
}

std::string_view valueInEitherForm(const OptionIndex::Option& option1,
                                   const OptionIndex::Option& option2,
                                   std::string_view parameter1, std::string_view parameter2) {
  if (!option1.value.empty() && !option2.value.empty()) {
    const std::string first(parameter1);
    writeLine("Warning: Should not set \"" + first + "\" and \"" + std::string(parameter2) +
              "\" at the same time.");
    writeLine("Using \"" + first + "\" this time.");
  }
  return option1.value.empty() ? option2.value : option1.value;
}

bool checkSupported(const OptionIndex& index, const SupportedParameterTable& table) {
  if (const std::string_view* name = index.firstUnsupported(table)) {
    writeText("The parameter: ");
    writeText(*name);
    writeText(" is not supported!");
    return false;
  }
  for (const auto& row : table) {
    if (!index.valueOf(row.first).empty() && !index.valueOf(row.second).empty()) {
      writeLine("Can not set \"" + row.first + "\" and \"" + row.second + "\" at the same time.");
      return false;
    }
  }
  return true;
}

}  // namespace tovak
