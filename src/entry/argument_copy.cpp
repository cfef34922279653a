#include "entry/argument_copy.h"

#include <cstdlib>
#include <cstring>

namespace tovak {

namespace {

void* allocateOrExit(std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) {
    std::exit(0);
  }
  return memory;
}

char* copyOf(const char* text) {
  const std::size_t length = text != nullptr ? std::strlen(text) : 0;
  char* copy = static_cast<char*>(allocateOrExit(length + 1));
  if (length > 0) {
    std::memcpy(copy, text, length);
  }
  copy[length] = '\0';
  return copy;
}

}  // namespace

ArgumentCopy::ArgumentCopy(int argc, char** argv) {
  if (argc <= 0 || argv == nullptr) {
    return;
  }
  strings_ = argc <= kInlineCount ? inlineStrings_
                                  : static_cast<char**>(allocateOrExit(
                                        sizeof(char*) * static_cast<std::size_t>(argc)));
  for (int i = 0; i < argc; ++i) {
    strings_[i] = copyOf(argv[i]);
    count_ = i + 1;
  }
}

ArgumentCopy::~ArgumentCopy() {
  for (int i = 0; i < count_; ++i) {
    std::free(strings_[i]);
  }
  if (strings_ != inlineStrings_) {
    std::free(strings_);
  }
}

void blankArguments(int argc, char** argv) {
  if (argv == nullptr) {
    return;
  }
  for (int i = 1; i < argc; ++i) {
    if (argv[i] != nullptr) {
      std::memset(argv[i], ' ', std::strlen(argv[i]));
    }
  }
}

}  // namespace tovak
