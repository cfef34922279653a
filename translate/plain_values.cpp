#include "plain_values.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace translate {
namespace {

// Each expansion is asked of the library as kStem, its number and Z: letters and digits, which
// the library copies whole wherever it copies a plain value.
constexpr std::string_view kStem = "PlainValue";

std::string placeholder(std::size_t index) {
  return std::string(kStem) + std::to_string(index) + "Z";
}

// A call whose words already hold the stem is left: its placeholders could not be told apart.
bool holdsStem(const Word& word) {
  return word.value.find(kStem) != std::string::npos ||
         std::any_of(word.parameters.begin(), word.parameters.end(),
                     [](const Parameter& p) { return p.name.find(kStem) != std::string::npos; });
}

bool isNameByte(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

// The value of a word with a placeholder for each of its expansions, numbered from first.
std::string placeheld(const Word& word, std::size_t first) {
  std::string value = word.value;
  for (std::size_t k = word.parameters.size(); k-- > 0;) {
    value.insert(word.parameters[k].at, placeholder(first + k));
  }
  return value;
}

// Why a word's expansions cannot be taken for plain values where they stand, or empty.
std::string whyNotPlain(const Word& word, const Word& before, bool ifsAssigned) {
  if (!word.onlyParameters) return word.unknownBecause;
  for (const Parameter& parameter : word.parameters) {
    if (!parameter.quoted && ifsAssigned) return "an unquoted expansion in a script that sets IFS";
    const std::size_t equals = word.value.find('=');
    if (word.value[0] == '-' && (equals == std::string::npos || parameter.at <= equals)) {
      return "an expansion in an option's name";
    }
    const bool afterShortOption =
        before.unknownBecause.empty() && before.value.size() == 2 && before.value[0] == '-';
    if (parameter.at == 0 && !afterShortOption) return "an expansion that may stand for an option";
    if ((before.value == "-e" && afterShortOption) || word.value.rfind("--exclude=", 0) == 0) {
      return "an expansion in the value of -e, which the library compares with all";
    }
  }
  return "";
}

}  // namespace

Placeholders withPlaceholders(const std::vector<Word>& arguments, bool ifsAssigned) {
  Placeholders result;
  std::size_t next = 0;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const Word& word = arguments[i];
    if (!word.parameters.empty() && result.whyNot.empty()) {
      result.whyNot = i == 0 ? "an expansion in the command word"
                             : whyNotPlain(word, arguments[i - 1], ifsAssigned);
    }
    if (holdsStem(word) && result.whyNot.empty()) {
      result.whyNot = "a word holds '" + std::string(kStem) +
                      "', the text the tool asks the library with in place of an expansion";
    }
    result.words.push_back(placeheld(word, next));
    next += word.parameters.size();
  }
  return result;
}

std::string withExpansions(const std::string& commandLine, const std::vector<Word>& arguments) {
  std::vector<std::string> names;
  for (const Word& word : arguments) {
    for (const Parameter& parameter : word.parameters) names.push_back(parameter.name);
  }
  std::string line;
  bool quoted = false;  // inside the quotes the library put around a value with a blank
  std::size_t tokenStart = 0;
  for (std::size_t i = 0; i <= commandLine.size(); ++i) {
    if (i < commandLine.size() && commandLine[i] == '"') quoted = !quoted;
    if (i < commandLine.size() && (commandLine[i] != ' ' || quoted)) continue;
    std::string token = commandLine.substr(tokenStart, i - tokenStart);
    bool held = false;
    for (std::size_t k = names.size(); k-- > 0;) {
      const std::string mark = placeholder(k);
      for (std::size_t at = 0; (at = token.find(mark, at)) != std::string::npos;) {
        const std::size_t after = at + mark.size();
        const bool braces = after < token.size() && isNameByte(token[after]);
        const std::string expansion = braces ? "${" + names[k] + "}" : "$" + names[k];
        token.replace(at, mark.size(), expansion);
        at += expansion.size();
        held = true;
      }
    }
    if (held && token.front() != '"') token = '"' + token + '"';
    line += token;
    if (i < commandLine.size()) line += ' ';
    tokenStart = i + 1;
  }
  return line;
}

}  // namespace translate
