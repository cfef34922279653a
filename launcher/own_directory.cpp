#include "own_directory.h"

#include <unistd.h>

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

}  // namespace launcher
