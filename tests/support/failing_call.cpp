// Preloaded into tovak-translate to reach its error paths: the call named in TOVAK_FAIL,
// "name errno", fails with that errno; EINTR only once, as a retried call must end. "write 0"
// instead writes one byte the first time, a short count the caller must take up.
#include <dlfcn.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// The errno for this call of the named function; -1 for none.
int errnoFor(const char* call) {
  static int interrupted = 0;
  char name[16];
  int number = -1;
  const char* wanted = std::getenv("TOVAK_FAIL");
  const bool named = wanted != nullptr && std::sscanf(wanted, "%15s %d", name, &number) == 2 &&
                     std::strcmp(name, call) == 0;
  return named && (number != EINTR || interrupted++ == 0) ? number : -1;
}

}  // namespace

// clang-format off
#define FAILING(result, call, parameters, arguments, failed, before)                  \
  extern "C" result call parameters {                                                 \
    const int number = errnoFor(#call);                                               \
    if (number > 0) return errno = number, failed;                                    \
    before                                                                            \
    return reinterpret_cast<result(*) parameters>(dlsym(RTLD_NEXT, #call)) arguments; \
  }
FAILING(ssize_t, read, (int fd, void* data, size_t size), (fd, data, size), -1, )
FAILING(ssize_t, write, (int fd, const void* data, size_t size), (fd, data, size), -1,
        static int shortened = 0; if (number == 0 && shortened++ == 0) size = 1;)
FAILING(int, mkstemp, (char* pattern), (pattern), -1, )
FAILING(int, fchown, (int fd, uid_t owner, gid_t group), (fd, owner, group), -1, )
FAILING(int, fsync, (int fd), (fd), -1, )
FAILING(int, link, (const char* from, const char* to), (from, to), -1, )
FAILING(int, rename, (const char* from, const char* to), (from, to), -1, )
FAILING(char*, realpath, (const char* path, char* resolved), (path, resolved), nullptr, )
// clang-format on

// What realpath() with a buffer of known size becomes under _FORTIFY_SOURCE.
extern "C" char* __realpath_chk(const char* path, char* resolved, size_t) {
  return realpath(path, resolved);
}
