#include "entry/translation.h"
#include "tovak/entry.h"

extern "C" int dll_main(int argc, char** argv) {
  const tovak::Translation translation = tovak::translateArguments(argc, argv);
  if (!translation.accepted) {
    return tovak::kRejected;
  }
  return exec(translation.commandLine);
}
