// Captures what the library writes to std::cout while an object of this class lives.
#ifndef TOVAK_TESTS_CAPTURE_H
#define TOVAK_TESTS_CAPTURE_H

#include <iostream>
#include <sstream>
#include <string>

class StdoutCapture {
 public:
  StdoutCapture() : previous_(std::cout.rdbuf(buffer_.rdbuf())) {}
  ~StdoutCapture() { std::cout.rdbuf(previous_); }
  StdoutCapture(const StdoutCapture&) = delete;
  StdoutCapture& operator=(const StdoutCapture&) = delete;

  std::string text() const { return buffer_.str(); }

 private:
  std::ostringstream buffer_;
  std::streambuf* previous_;
};

#endif  // TOVAK_TESTS_CAPTURE_H
