// What the in-process tests and the fuzzer share: writable argument vectors, standard output
// captured at the file descriptor, and a translation as dll_main does it short of launching.
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

// The real path of build/bin, with a trailing "/".
std::string binDirectory();

#endif  // TOVAK_TESTS_SUPPORT_H
