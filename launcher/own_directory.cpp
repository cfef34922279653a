#include "own_directory.h"

#include <unistd.h>

#include <cstring>

namespace launcher {

std::optional<std::string> ownDirectory() {
  char target[4096];
  const ssize_t length = readlink("/proc/self/exe", target, sizeof target);
  if (length <= 0 || static_cast<std::size_t>(length) >= sizeof target) {
    return std::nullopt;
  }
  const std::string path(target, static_cast<std::size_t>(length));
  return path.substr(0, path.rfind('/') + 1);
}

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

}  // namespace launcher
