// What the tests share: writable argument vectors, captured standard output, a translation
// of a legacy line without launching anything, and child processes with exact arguments.
#ifndef TOVAK_TESTS_SUPPORT_H
#define TOVAK_TESTS_SUPPORT_H

#include <iostream>
#include <sstream>
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

// Captures what the library writes to std::cout while it lives.
class StdoutCapture {
 public:
  StdoutCapture() : previous_(std::cout.rdbuf(buffer_.rdbuf())) {}
  ~StdoutCapture() { std::cout.rdbuf(previous_); }
  std::string text() const { return buffer_.str(); }

 private:
  std::ostringstream buffer_;
  std::streambuf* previous_;
};

// "tovak <words...>" translated as dll_main would: the Fendix line ("" when refused) and
// everything printed on the way.
struct Outcome {
  std::string line;
  std::string printed;
};
Outcome translateLine(const std::vector<std::string>& words);

struct ChildResult {
  std::string out;
  std::string err;
  int exitCode = -1;
};
// The child inherits this process's environment.
ChildResult runChild(const std::string& program, const std::vector<std::string>& arguments);

// The real path of build/bin, with a trailing "/".
std::string binDirectory();

inline const std::string kOutputOption = " --output /var/log/Zantor_Support/";

#endif  // TOVAK_TESTS_SUPPORT_H
