// Turns what dll_main does into the launcher's exit code, the way a shell user expects: a
// rejected line stays 1, a tool that exited passes its own code through, a tool killed by a
// signal gives 128 plus the signal number, and an exception becomes the launcher's own 125.
#ifndef TOVAK_LAUNCHER_EXIT_CODE_H
#define TOVAK_LAUNCHER_EXIT_CODE_H

namespace launcher {

// The launcher's own failures: the library could not be loaded, has no dll_main or threw,
// or the launcher will not run where it is.
constexpr int kLoadFailure = 125;
// A status that is neither a rejection nor a wait status, such as -1 when no process
// could be created for the shell.
constexpr int kUnknownStatus = 255;

int exitCodeFor(int status);

using EntryPoint = int (*)(int, char**);

// Calls the entry point and gives the exit code for its status. An exception that escapes
// it is named in one line on standard error and gives kLoadFailure; Fendix may have run.
int exitCodeOfCall(EntryPoint entry, int argc, char** argv);

}  // namespace launcher

#endif  // TOVAK_LAUNCHER_EXIT_CODE_H
