// Prints the executable's directory and the directory of the module holding this program's
// code, as the library finds them, for runs under odd program names and in odd places.
#include <cstdio>

#include "tovak/process_path.h"

namespace {
void here() {}
}  // namespace

int main() {
  std::printf("%s\n%s\n", GetCurProcessPathLin().c_str(),
              GetModulePathLin(reinterpret_cast<void*>(&here)).c_str());
}
