// A stand-in for the Fendix update tool, for demonstrations and tests only: it shows how
// the shell split the translated line and exits with $FENDIX_EXIT_CODE (0 when unset).
// Never install it as Fendix: it would shadow the real tool.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char** argv) {
  if (const char* log = std::getenv("FENDIX_LOG")) {
    std::string record = "Fendix";
    for (int i = 1; i < argc; ++i) {
      record += " [" + std::to_string(std::string(argv[i]).size()) + "]" + argv[i];
    }
    record += '\n';
    // First, so that a reader that closed the pipe cannot kill the stand-in before it logs;
    // one write to a file opened for appending, so that records of concurrent runs do not mix.
    const int fd = open(log, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0 || write(fd, record.data(), record.size()) != static_cast<ssize_t>(record.size())) {
      std::fprintf(stderr, "Fendix stand-in: cannot append to %s\n", log);
      return 2;
    }
    close(fd);
  }
  std::printf("Fendix stand-in received %d arguments\n", argc - 1);
  for (int i = 1; i < argc; ++i) {
    std::printf("  [%d] <%s>\n", i, argv[i]);
  }
  std::fflush(stdout);
  const char* code = std::getenv("FENDIX_EXIT_CODE");
  if (code == nullptr || *code == '\0') {
    return 0;
  }
  char* end = nullptr;
  errno = 0;
  const long value = std::strtol(code, &end, 10);
  if (errno != 0 || *end != '\0' || value < 0 || value > 255) {
    std::fprintf(stderr, "Fendix stand-in: FENDIX_EXIT_CODE must be 0 to 255, not '%s'\n", code);
    return 2;
  }
  return static_cast<int>(value);
}
