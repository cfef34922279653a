#include <utility>

#include "entry/translation.h"
#include "tovak/entry.h"

extern "C" int dll_main(int argc, char** argv) {
  tovak::Translation translation = tovak::translateArguments(argc, argv);
  if (!translation.accepted) {
    return tovak::kRejected;
  }
  return exec(std::move(translation.commandLine));
}
