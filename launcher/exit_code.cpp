#include "exit_code.h"

#include <sys/wait.h>

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

}  // namespace launcher
