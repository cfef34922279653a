#include "tovak/process_path.h"

#include <dlfcn.h>
#include <limits.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

// Where no program can be: what a path function gives when it cannot be sure.
constexpr const char* kNowhere = "/dev/null/";

// "/opt/t/launcher" gives "/opt/t/". Both callers pass absolute paths.
std::string directoryOf(std::string_view path) {
  return std::string(path.substr(0, path.rfind('/') + 1));
}

bool isBareFileName(const char* name) {
  return name[0] != '\0' && name[0] != '.' && name[0] != '/';
}

}  // namespace

std::string GetCurProcessPath() { return GetCurProcessPathLin(); }

std::string GetCurProcessPathLin() {
  char linkPath[32];
  std::snprintf(linkPath, sizeof linkPath, "/proc/%d/exe", static_cast<int>(getpid()));
  char target[PATH_MAX];
  const ssize_t length = readlink(linkPath, target, sizeof target);
  // An unreadable link, or one that fills the whole buffer and may be cut short, gives no
  // directory rather than a wrong one.
  if (length <= 0 || static_cast<std::size_t>(length) >= sizeof target) {
    return kNowhere;
  }
  return directoryOf(std::string_view(target, static_cast<std::size_t>(length)));
}

std::string GetModulePathLin(void* address) {
  Dl_info info{};
  if (dladdr(address, &info) == 0) {
    return std::string();
  }
  const char* name = info.dli_fname != nullptr ? info.dli_fname : "";
  // A bare file name is taken to lie beside the executable.
  if (isBareFileName(name)) {
    return GetCurProcessPathLin();
  }
  char resolved[PATH_MAX];
  if (realpath(name, resolved) == nullptr) {
    return kNowhere;
  }
  return directoryOf(resolved);
}

std::string GetSysTempPath() { return "/tmp/"; }
