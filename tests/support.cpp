#include "support.h"

#include <stdlib.h>
#include <unistd.h>

#include <fstream>
#include <iostream>
#include <utility>

namespace {

// Fully buffered whatever fd 1 is, so that only an explicit flush reaches the capture file.
const int kFullyBuffered = std::setvbuf(stdout, nullptr, _IOFBF, 1 << 16);

std::string contentsOf(const std::string& path) {
  std::ifstream file(path);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace

ArgumentVector::ArgumentVector(std::vector<std::string> arguments)
    : storage_(std::move(arguments)) {
  for (std::string& argument : storage_) pointers_.push_back(argument.data());
}

OutputCapture::OutputCapture() : file_(std::tmpfile()), saved_(dup(STDOUT_FILENO)) {
  static_cast<void>(kFullyBuffered);
  std::cout.flush();
  std::fflush(stdout);
  dup2(fileno(file_), STDOUT_FILENO);
}

OutputCapture::~OutputCapture() {
  all();
  dup2(saved_, STDOUT_FILENO);
  close(saved_);
  std::fclose(file_);
}

std::string OutputCapture::flushed() {
  return contentsOf("/proc/self/fd/" + std::to_string(fileno(file_)));
}

std::string OutputCapture::all() {
  std::cout.flush();
  std::fflush(stdout);
  return flushed();
}

std::string binDirectory() {
  char resolved[4096];
  return std::string(realpath(TOVAK_TEST_BIN_DIR, resolved)) + "/";
}
