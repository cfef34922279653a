// Turns the status dll_main returns into the launcher's exit code, the way a shell user
// expects: a rejected line stays 1, a tool that exited passes its own code through, a tool
// killed by a signal gives 128 plus the signal number.
#ifndef TOVAK_LAUNCHER_EXIT_CODE_H
#define TOVAK_LAUNCHER_EXIT_CODE_H

namespace launcher {

// The library could not be loaded or has no dll_main.
constexpr int kLoadFailure = 125;
// A status that is neither a rejection nor a wait status, such as -1 when no process
// could be created for the shell.
constexpr int kUnknownStatus = 255;

int exitCodeFor(int status);

}  // namespace launcher

#endif  // TOVAK_LAUNCHER_EXIT_CODE_H
