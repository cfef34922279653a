// Asks the library to translate one legacy line without running anything, with the lines
// it prints caught instead of reaching standard output; and the catching itself, which the
// fuzzer and the benchmark use too.
#ifndef TOVAK_TRANSLATE_LIBRARY_CALL_H
#define TOVAK_TRANSLATE_LIBRARY_CALL_H

#include <cstdio>
#include <string>
#include <vector>

namespace translate {

struct LibraryAnswer {
  bool accepted = false;
  std::string commandLine;  // what follows "./Fendix " in the line the launcher would run
  std::string messages;     // every byte the library printed, as it printed them
};

// What CapturedOutput throws when it has no descriptor to spare for catching the output: a
// plain type, as the sanitizers' checks of polymorphic ones need descriptors themselves.
struct CaptureFailed {
  int error;  // errno
};

// Points standard output at a temporary file for as long as it lives. Without a descriptor
// to spare for either, it throws rather than let the library print into the caller's output.
class CapturedOutput {
 public:
  CapturedOutput();
  ~CapturedOutput();
  CapturedOutput(const CapturedOutput&) = delete;
  CapturedOutput& operator=(const CapturedOutput&) = delete;

  // What has reached the file so far; what stdio still holds in its buffer has not.
  std::string written() const;
  // Flushes standard output, gives it back and returns everything printed meanwhile.
  std::string finish();

 private:
  void release();

  int saved_ = -1;
  std::FILE* file_ = nullptr;
};

// words are the legacy arguments after the program name.
LibraryAnswer askLibrary(const std::vector<std::string>& words);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_LIBRARY_CALL_H
