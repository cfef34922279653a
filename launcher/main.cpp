// tovak: a stand-in for the host launcher. It loads libtovak.so from its own directory (or
// from the library directory once installed), hands it this process's own argument vector
// through dll_main and exits with the status turned into an exit code.
//
// It would rather refuse, with 125, than run something it did not mean to: when it cannot
// tell its own directory for certain, and when that directory holds a byte the shell would
// read as syntax, since the library puts the directory unquoted in front of Fendix.
//
// "tovak --help" and "tovak --version" are answered here, before anything is loaded, and only
// when they are the whole line: any other line goes to the library as it stands, after one
// record of the call is sent to the system log.
#include <dlfcn.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "call_record.h"
#include "exit_code.h"
#include "own_directory.h"
#include "usage.h"

#ifndef TOVAK_LIBDIR_FROM_BINDIR
#define TOVAK_LIBDIR_FROM_BINDIR "../lib"
#endif
#ifndef TOVAK_VERSION
#define TOVAK_VERSION "unknown"
#endif

namespace {

// Beside the launcher in a build tree, in the library directory once installed; always by
// an absolute path, never through the loader's search.
void* loadLibrary(const std::string& directory, std::string& error) {
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

// The text for a line that is exactly "--help" or "--version", or null.
const char* ownAnswer(int argc, char** argv) {
  if (argc != 2) return nullptr;
  if (std::strcmp(argv[1], "--help") == 0) return launcher::kUsage;
  if (std::strcmp(argv[1], "--version") == 0) return "tovak " TOVAK_VERSION "\n";
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  if (const char* answer = ownAnswer(argc, argv)) {
    // A write that failed, such as on a full disk, shows at the flush.
    std::fputs(answer, stdout);
    return std::fflush(stdout) == 0 ? 0 : 1;
  }
  const std::optional<std::string> directory = launcher::ownDirectory();
  if (!directory) {
    std::fprintf(stderr, "tovak: cannot tell this program's directory from /proc/self/exe\n");
    return launcher::kLoadFailure;
  }
  if (const std::optional<unsigned char> byte = launcher::firstShellSyntaxByte(*directory)) {
    std::fprintf(stderr, "tovak: will not run from %s: the shell would read its byte 0x%02x\n",
                 directory->c_str(), *byte);
    return launcher::kLoadFailure;
  }
  launcher::recordCall(argc, argv);
  std::string error;
  void* library = loadLibrary(*directory, error);
  if (library == nullptr) {
    std::fprintf(stderr, "tovak: cannot load libtovak.so: %s\n", error.c_str());
    return launcher::kLoadFailure;
  }
  const auto entry = reinterpret_cast<launcher::EntryPoint>(dlsym(library, "dll_main"));
  if (entry == nullptr) {
    std::fprintf(stderr, "tovak: libtovak.so has no dll_main\n");
    dlclose(library);
    return launcher::kLoadFailure;
  }
  const int exitCode = launcher::exitCodeOfCall(entry, argc, argv);
  std::fflush(stdout);
  dlclose(library);
  return exitCode;
}
