// What the tests and the fuzzer share: writable argument vectors, standard output captured
// at the file descriptor, a translation as dll_main does it short of launching, and child
// processes with exact arguments and an explicit environment.
#ifndef TOVAK_TESTS_SUPPORT_H
#define TOVAK_TESTS_SUPPORT_H

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

class ArgumentVector {
 public:
  explicit ArgumentVector(std::vector<std::string> arguments);
  int argc() { return static_cast<int>(pointers_.size()); }
  char** argv() { return pointers_.data(); }

 private:
  std::vector<std::string> storage_;
  std::vector<char*> pointers_;
};

// Sends file descriptor 1 into a file while it lives. flushed() is what reached the file so
// far; all() flushes the streams first, so it adds what the library left in their buffers.
class OutputCapture {
 public:
  OutputCapture();
  ~OutputCapture();
  std::string flushed();
  std::string all();

 private:
  std::FILE* file_;
  int saved_;
};

struct Translated {
  std::optional<std::string> line;  // nullopt: refused
  std::string flushed, all;         // what was printed, as for OutputCapture
  bool blanked;  // the caller's argv[1..] became blanks of the same lengths, argv[0] stayed
};
// "tovak <words...>" through everything dll_main does but the launch.
Translated translate(const std::vector<std::string>& words);

struct ChildResult {
  std::string out, err;
  int exitCode = -1;  // 128 + signal for a killed child
};
// Runs program with argv[0] argv0 and exactly the environment given, plus the sanitizers'
// settings of this process.
ChildResult runChild(const std::string& program, const std::string& argv0,
                     const std::vector<std::string>& arguments,
                     const std::vector<std::string>& environment = {});

// The real path of build/bin, with a trailing "/".
std::string binDirectory();

// What exec prints around a run, with what Fendix printed in between.
std::string launched(const std::string& dir, const std::string& line, int status,
                     const std::string& fendix = "");
// What the stand-in Fendix prints about the arguments it received.
std::string standIn(const std::vector<std::string>& received);

#endif  // TOVAK_TESTS_SUPPORT_H
