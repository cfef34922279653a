#include "parameters/option_index.h"

#include <string>

#include "platform/console.h"

namespace tovak {

namespace {

bool namesAnOption(std::string_view name) {
  return isSingleDash(name) || (isDoubleDash(name) && name.find('=') == std::string_view::npos);
}

std::uint64_t hashOf(std::string_view text) {
  std::uint64_t hash = 14695981039346656037ULL;  // FNV-1a
  for (const char c : text) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
  }
  return hash;
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

OptionIndex::OptionIndex(const Parameters& parameters) {
  const std::vector<std::string>& tokens = parameters.parameterList;
  if (tokens.empty()) {
    return;
  }
  std::size_t slotCount = 8;
  while (slotCount < 2 * tokens.size()) {
    slotCount *= 2;
  }
  slots_.assign(slotCount, 0);
  entries_.reserve(tokens.size());
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

bool OptionIndex::isSet(std::string_view name) const {
  return namesAnOption(name) && find(name) != nullptr;
}

std::string_view OptionIndex::valueOf(std::string_view name) const {
  const Entry* entry = namesAnOption(name) ? find(name) : nullptr;
  return entry != nullptr ? entry->value : std::string_view();
}

const std::string_view* OptionIndex::firstUnsupported(const SupportedParameterTable& table) const {
  for (const Entry& entry : entries_) {
    if (!isInTable(entry.name, table)) {
      return &entry.name;
    }
  }
  return nullptr;
}

std::size_t OptionIndex::slotFor(std::string_view name) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hashOf(name) & mask;
  while (slots_[slot] != 0 && entries_[slots_[slot] - 1].name != name) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

const OptionIndex::Entry* OptionIndex::find(std::string_view name) const {
  if (slots_.empty()) {
    return nullptr;
  }
  const std::uint32_t taken = slots_[slotFor(name)];
  return taken != 0 ? &entries_[taken - 1] : nullptr;
}

OptionIndex::Entry& OptionIndex::findOrAdd(std::string_view name) {
  const std::size_t slot = slotFor(name);
  if (slots_[slot] == 0) {
    entries_.push_back(Entry{name, std::string_view(), false});
    slots_[slot] = static_cast<std::uint32_t>(entries_.size());
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
  const std::string_view value1 = index.valueOf(parameter1);
  const std::string_view value2 = index.valueOf(parameter2);
  if (!value1.empty() && !value2.empty()) {
    const std::string first(parameter1);
    writeLine("Warning: Should not set \"" + first + "\" and \"" + std::string(parameter2) +
              "\" at the same time.");
    writeLine("Using \"" + first + "\" this time.");
  }
  return value1.empty() ? value2 : value1;
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
