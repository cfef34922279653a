// The floor for a launcher that goes through the shell: a minimal C++ program, with the C++
// runtime loaded as any C++ launcher has it, that prints with printf the lines the library
// prints around the run and makes one system() call with the full command given as its
// only argument, and nothing else.
#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const std::string command = argv[1];  // as a C++ launcher holds it, with libstdc++ loaded
  std::printf("The translated command is: \n%s\n", command.c_str());
  std::fflush(stdout);
  const int status = std::system(command.c_str());
  std::printf("The fendx return code is: %d\n", status);
  return status == 0 ? 0 : 1;
}
