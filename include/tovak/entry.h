// The entry point a host launcher calls with its own argument vector, and the launch of
// the update tool that ends every accepted run.
#ifndef TOVAK_ENTRY_H
#define TOVAK_ENTRY_H

#include <string>

#include "tovak/export.h"

// Checks and translates one legacy command line, runs Fendix with the result and returns
// its shell status; 1 when the line is rejected. Overwrites argv[1..argc-1] with blanks.
extern "C" TOVAK_API int dll_main(int argc, char** argv);

// Runs "<executable's directory>./Fendix <commandLine>" through the shell, printing the
// command before and the raw system() status after; returns that status unchanged.
TOVAK_API int exec(std::string commandLine);

#endif  // TOVAK_ENTRY_H
