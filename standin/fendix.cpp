// A stand-in for the Fendix update tool, for demonstrations and tests only: it shows how
// the shell split the translated line and exits with $FENDIX_EXIT_CODE (0 when unset).
// Never install it as Fendix: it would shadow the real tool.
#include <cerrno>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
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
