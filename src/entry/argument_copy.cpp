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

char* copyOf(const char* text, std::size_t length) {
  char* copy = static_cast<char*>(allocateOrExit(length + 1));
  if (length > 0) {
    std::memcpy(copy, text, length);
  }
  copy[length] = '\0';
  return copy;
}

}  // namespace

ArgumentCopy::ArgumentCopy(int argc, char** argv) : originals_(argv) {
  if (argc <= 0 || argv == nullptr) {
    return;
  }
  if (argc <= kInlineCount) {
    strings_ = inlineStrings_;
    lengths_ = inlineLengths_;
  } else {
    // One block: the pointers, then the lengths.
    const auto count = static_cast<std::size_t>(argc);
    strings_ = static_cast<char**>(allocateOrExit((sizeof(char*) + sizeof(std::size_t)) * count));
    lengths_ = reinterpret_cast<std::size_t*>(strings_ + count);
  }
  for (int i = 0; i < argc; ++i) {
    lengths_[i] = argv[i] != nullptr ? std::strlen(argv[i]) : 0;
    strings_[i] = copyOf(argv[i], lengths_[i]);
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

void ArgumentCopy::blankOriginals() const {
  for (int i = 1; i < count_; ++i) {
    if (originals_[i] != nullptr) {
      std::memset(originals_[i], ' ', lengths_[i]);
    }
  }
}

}  // namespace tovak
