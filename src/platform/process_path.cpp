#include "tovak/process_path.h"

#include <dlfcn.h>
#include <limits.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t kPathBufferSize = 4096;

// Where no program can be: what a path function gives when it cannot be sure.
constexpr const char* kNowhere = "/dev/null/";

// "/opt/t/launcher" gives "/opt/t/"; a text without "/" stays whole. With room for more
// after it, where the caller appends to it.
std::string directoryOf(std::string_view path, std::size_t room = 0) {
  const std::size_t slash = path.rfind('/');
  const std::string_view directory =
      slash == std::string_view::npos ? path : path.substr(0, slash + 1);
  std::string text;
  text.reserve(directory.size() + room);
  text.append(directory);
  return text;
}

// "/proc/<pid>/exe", written by hand: formatting it with snprintf cost more than the rest
// of the lookup.
void linkPathOf(pid_t pid, char (&path)[32]) {
  char digits[16];
  std::size_t count = 0;
  auto left = static_cast<unsigned long>(pid);
  do {
    digits[count++] = static_cast<char>('0' + left % 10);
    left /= 10;
  } while (left != 0);
  char* out = path;
  for (const char c : {'/', 'p', 'r', 'o', 'c', '/'}) *out++ = c;
  while (count > 0) *out++ = digits[--count];
  for (const char c : {'/', 'e', 'x', 'e', '\0'}) *out++ = c;
}

bool isBareFileName(const char* name) {
  return name[0] != '\0' && name[0] != '.' && name[0] != '/';
}

// realpath() wants room for PATH_MAX bytes; that is the 4096-byte buffer on Linux.
static_assert(PATH_MAX <= kPathBufferSize, "realpath buffer too small");

// exec puts "./Fendix " and the translated line after the directory it gets from
// GetCurProcessPath: with this much room a usual line needs no second buffer.
constexpr std::size_t kCommandRoom = 256;

// The running executable's directory, from its /proc entry.
std::string processDirectory(std::size_t room) {
  char linkPath[32];
  linkPathOf(getpid(), linkPath);
  char target[kPathBufferSize];
  const ssize_t length = readlink(linkPath, target, sizeof target);
  // An unreadable link, or one that fills the whole buffer and may be cut short, gives no
  // directory rather than a wrong one.
  if (length <= 0 || static_cast<std::size_t>(length) >= sizeof target) {
    return kNowhere;
  }
  return directoryOf(std::string_view(target, static_cast<std::size_t>(length)), room);
}

}  // namespace

std::string GetCurProcessPath() { return processDirectory(kCommandRoom); }

std::string GetCurProcessPathLin() { return processDirectory(0); }

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
  char resolved[kPathBufferSize];
  if (realpath(name, resolved) == nullptr) {
    return kNowhere;
  }
  return directoryOf(resolved);
}

std::string GetSysTempPath() { return "/tmp/"; }
