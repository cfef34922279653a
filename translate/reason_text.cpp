#include "reason_text.h"

#include <cstdio>

namespace translate {

std::string oneLine(std::string_view text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) text.remove_suffix(1);
  std::string line;
  for (const char c : text) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      line += "\\n";
    } else if (c == '\r') {
      line += "\\r";
    } else if (c == '\t') {
      line += "\\t";
    } else if (byte < 0x20 || byte == 0x7f) {
      char escaped[5];
      std::snprintf(escaped, sizeof escaped, "\\x%02x", byte);
      line += escaped;
    } else {
      line += c;
    }
  }
  return line;
}

}  // namespace translate
