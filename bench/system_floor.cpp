// The floor for a launcher that goes through the shell: a minimal C++ program, with the C++
// runtime loaded as any C++ launcher has it, that makes one system() call with the full
// command given as its only argument, and nothing else.
#include <cstdlib>
#include <string>

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const std::string command = argv[1];
  return std::system(command.c_str()) == 0 ? 0 : 1;
}
