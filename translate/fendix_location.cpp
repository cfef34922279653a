#include "fendix_location.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "own_directory.h"
#include "reason_text.h"

namespace translate {

FendixLocation locateFendix(const std::string& launcher, const std::string& chosen) {
  if (!chosen.empty()) return {chosen, ""};
  if (launcher == "tovak") return {"Fendix", ""};
  if (launcher[0] != '/') {
    return {"", "a relative path to tovak: its directory depends on where the script runs"};
  }
  char resolved[PATH_MAX];
  if (realpath(launcher.c_str(), resolved) == nullptr) {
    return {"", "cannot resolve " + oneLine(launcher) + ": " + std::strerror(errno)};
  }
  std::string directory(resolved);
  directory.erase(directory.rfind('/') + 1);
  if (const auto byte = launcher::firstShellSyntaxByte(directory)) {
    char hex[8];
    std::snprintf(hex, sizeof hex, "0x%02x", *byte);
    return {"", "the launcher refuses to run from " + oneLine(directory) + " (byte " + hex + ")"};
  }
  return {directory + "Fendix", ""};
}

}  // namespace translate
