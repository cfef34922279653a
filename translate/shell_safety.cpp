#include "shell_safety.h"

#include <cstring>

namespace translate {
namespace {

// Inside double quotes only these still act.
bool actsInQuotes(char c) { return c == '"' || c == '$' || c == '`' || c == '\\'; }

bool actsUnquoted(char c, bool wordStart) {
  return (c == '#' && wordStart) ||
         (c != '\0' && std::strchr("\"';&|<>(){}$`\\*?[]~\t\n\r", c) != nullptr);
}

}  // namespace

std::optional<char> firstSyntaxByte(std::string_view commandLine) {
  bool wordStart = true;
  for (std::size_t i = 0; i < commandLine.size(); ++i) {
    const char c = commandLine[i];
    if (c == '"' && wordStart) {
      // The quotes the library put around a value with a blank.
      std::size_t close = i + 1;
      while (close < commandLine.size() && !actsInQuotes(commandLine[close])) ++close;
      if (close >= commandLine.size() || commandLine[close] != '"') {
        return close < commandLine.size() ? commandLine[close] : '"';
      }
      i = close;
      wordStart = false;
    } else if (actsUnquoted(c, wordStart)) {
      return c;
    } else {
      wordStart = c == ' ';
    }
  }
  return std::nullopt;
}

}  // namespace translate
