// tovak: a stand-in for the host launcher. It loads libtovak.so, hands it this process's
// own argument vector through dll_main and exits with the status turned into an exit code.
#include <dlfcn.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "exit_code.h"

#ifndef TOVAK_LIBDIR_FROM_BINDIR
#define TOVAK_LIBDIR_FROM_BINDIR "../lib"
#endif

namespace {

using EntryPoint = int (*)(int, char**);

std::string ownDirectory() {
  char target[4096];
  const ssize_t length = readlink("/proc/self/exe", target, sizeof target - 1);
  if (length <= 0) {
    return std::string();
  }
  const std::string path(target, static_cast<std::size_t>(length));
  return path.substr(0, path.rfind('/') + 1);
}

// Beside the launcher in a build tree, in the library directory once installed.
void* loadLibrary(std::string& error) {
  const std::string directory = ownDirectory();
  for (const std::string& candidate :
       {directory + "libtovak.so", directory + TOVAK_LIBDIR_FROM_BINDIR "/libtovak.so"}) {
    if (void* library = dlopen(candidate.c_str(), RTLD_NOW | RTLD_LOCAL)) {
      return library;
    }
    const char* reason = dlerror();
    if (error.empty() && reason != nullptr) {
      error = reason;
    }
  }
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  std::string error;
  void* library = loadLibrary(error);
  if (library == nullptr) {
    std::fprintf(stderr, "tovak: cannot load libtovak.so: %s\n", error.c_str());
    return launcher::kLoadFailure;
  }
  const auto entry = reinterpret_cast<EntryPoint>(dlsym(library, "dll_main"));
  if (entry == nullptr) {
    std::fprintf(stderr, "tovak: libtovak.so has no dll_main\n");
    dlclose(library);
    return launcher::kLoadFailure;
  }
  const int status = entry(argc, argv);
  std::fflush(stdout);
  dlclose(library);
  return launcher::exitCodeFor(status);
}
