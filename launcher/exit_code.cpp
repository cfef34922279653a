#include "exit_code.h"

#include <sys/wait.h>

#include <cstdio>
#include <exception>

namespace launcher {

namespace {
constexpr int kRejectedLine = 1;
}  // namespace

int exitCodeFor(int status) {
  // Checked first: as a wait status, 1 would read as "killed by SIGHUP".
  if (status == kRejectedLine) {
    return kRejectedLine;
  }
  if (status < 0) {
    return kUnknownStatus;
  }
  if (WIFEXITED(status)) {
    return WEXITSTATUS(status);
  }
  if (WIFSIGNALED(status)) {
    return 128 + WTERMSIG(status);
  }
  return kUnknownStatus;
}

int exitCodeOfCall(EntryPoint entry, int argc, char** argv) {
  try {
    return exitCodeFor(entry(argc, argv));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "tovak: dll_main failed: %s\n", error.what());
  } catch (...) {
    std::fprintf(stderr, "tovak: dll_main failed with an unknown exception\n");
  }
  return kLoadFailure;
}

}  // namespace launcher
