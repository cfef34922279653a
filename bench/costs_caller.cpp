// Calls dll_main on one legacy line as many times as asked, with system() replaced by one
// that runs nothing, so that a profiler sees the library's own work and nothing else. The
// caller allocates nothing itself: each call gets fresh copies of the words in a fixed
// buffer, since dll_main blanks the ones it was given.
//
//   tovak_costs_caller <calls> <program name> <legacy words...>
#include <cstdlib>
#include <cstring>

#include "tovak/entry.h"

extern "C" int system(const char*) { return 0; }

namespace {

constexpr int kMaxWords = 64;
constexpr std::size_t kBufferSize = 1 << 16;

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3 || argc - 2 > kMaxWords) return 2;
  static char buffer[kBufferSize];
  static char* words[kMaxWords];
  const int calls = std::atoi(argv[1]);
  for (int call = 0; call < calls; ++call) {
    std::size_t used = 0;
    for (int i = 2; i < argc; ++i) {
      const std::size_t size = std::strlen(argv[i]) + 1;
      if (used + size > kBufferSize) return 2;
      words[i - 2] = static_cast<char*>(std::memcpy(buffer + used, argv[i], size));
      used += size;
    }
    dll_main(argc - 2, words);
  }
  return 0;
}
