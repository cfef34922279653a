// Runs a program as a child process with an exact argument vector and collects its
// standard output, standard error and exit code.
#ifndef TOVAK_TESTS_CHILD_PROCESS_H
#define TOVAK_TESTS_CHILD_PROCESS_H

#include <string>
#include <utility>
#include <vector>

struct ChildResult {
  std::string out;
  std::string err;
  int exitCode = -1;  // 128 + signal number for a child killed by a signal
};

// environment: NAME=value entries added to (or replacing those of) this process's own.
ChildResult runChild(const std::string& program, const std::vector<std::string>& arguments,
                     const std::vector<std::string>& environment = {});

// Directory of the build's programs: the library, tovak and the stand-in Fendix.
std::string binDirectory();

#endif  // TOVAK_TESTS_CHILD_PROCESS_H
