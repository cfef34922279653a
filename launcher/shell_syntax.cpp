#include "shell_syntax.h"

#include <cstring>

namespace launcher {
namespace {

// Inside double quotes only these still act.
bool actsInQuotes(char c) { return c == '"' || c == '$' || c == '`' || c == '\\'; }

bool actsUnquoted(char c, bool wordStart) {
  return (c == '#' && wordStart) ||
         (c != '\0' && std::strchr("\"';&|<>(){}$`\\*?[]~\t\n\r", c) != nullptr);
}

}  // namespace

std::optional<unsigned char> firstShellSyntaxByte(const std::string& path) {
  for (const char c : path) {
    const unsigned char byte = static_cast<unsigned char>(c);
    const bool alphanumeric = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                              (byte >= '0' && byte <= '9');
    if (!alphanumeric && std::strchr("/._-+,:@%=", byte) == nullptr) {
      return byte;
    }
  }
  return std::nullopt;
}

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

}  // namespace launcher
