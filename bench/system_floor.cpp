// The floor for any launcher that goes through the shell: one system() call with the full
// command given as the only argument, and nothing else.
#include <cstdlib>

int main(int argc, char** argv) { return argc < 2 ? 2 : std::system(argv[1]) == 0 ? 0 : 1; }
