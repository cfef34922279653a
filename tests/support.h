// What the in-process tests and the fuzzer share: writable argument vectors and standard
// output captured at the file descriptor.
#ifndef TOVAK_TESTS_SUPPORT_H
#define TOVAK_TESTS_SUPPORT_H

#include <cstdio>
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

// The real path of build/bin, with a trailing "/".
std::string binDirectory();

#endif  // TOVAK_TESTS_SUPPORT_H
