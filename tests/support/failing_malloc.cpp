// Preloaded into a child process to make one allocation fail: malloc returns null for the
// size named in TOVAK_FAIL_MALLOC_SIZE and behaves normally for every other size.
#include <cstddef>
#include <cstdlib>

extern "C" void* __libc_malloc(std::size_t size);

namespace {

// Read on every call: getenv does not allocate, and nothing is cached across calls.
std::size_t failingSize() {
  const char* text = std::getenv("TOVAK_FAIL_MALLOC_SIZE");
  return text != nullptr ? std::strtoull(text, nullptr, 10) : 0;
}

}  // namespace

extern "C" void* malloc(std::size_t size) {
  if (size != 0 && size == failingSize()) {
    return nullptr;
  }
  return __libc_malloc(size);
}
