// Asks the library to translate one legacy line without running anything, with the lines
// it prints caught instead of reaching standard output.
#ifndef TOVAK_TRANSLATE_LIBRARY_CALL_H
#define TOVAK_TRANSLATE_LIBRARY_CALL_H

#include <string>
#include <vector>

namespace translate {

struct LibraryAnswer {
  bool accepted = false;
  std::string commandLine;  // what follows "./Fendix " in the line the launcher would run
  std::string messages;     // every byte the library printed, as it printed them
};

// What askLibrary throws when it has no descriptor to spare for catching the output: a
// plain type, as the sanitizers' checks of polymorphic ones need descriptors themselves.
struct CaptureFailed {
  int error;  // errno
};

// words are the legacy arguments after the program name.
LibraryAnswer askLibrary(const std::vector<std::string>& words);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_LIBRARY_CALL_H
