#include "library_call.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "entry/translation.h"

namespace translate {
namespace {

// Points standard output at a temporary file for as long as it lives. Without a descriptor
// to spare for either, it throws rather than let the library print into the tool's output.
class CapturedOutput {
 public:
  CapturedOutput() {
    std::fflush(stdout);
    saved_ = dup(STDOUT_FILENO);
    file_ = saved_ >= 0 ? std::tmpfile() : nullptr;
    if (file_ == nullptr || dup2(fileno(file_), STDOUT_FILENO) < 0) {
      const int error = errno;
      release();
      throw CaptureFailed{error};
    }
  }
  ~CapturedOutput() { release(); }
  CapturedOutput(const CapturedOutput&) = delete;
  CapturedOutput& operator=(const CapturedOutput&) = delete;

  std::string finish() {
    std::fflush(stdout);
    dup2(saved_, STDOUT_FILENO);
    std::string text;
    std::rewind(file_);
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, file_)) > 0;)
      text.append(buffer, n);
    return text;
  }

 private:
  void release() {
    if (file_ != nullptr) std::fclose(file_);
    if (saved_ >= 0) close(saved_);
  }

  int saved_ = -1;
  std::FILE* file_ = nullptr;
};

}  // namespace

LibraryAnswer askLibrary(const std::vector<std::string>& words) {
  // The library blanks the strings it is given, so it gets copies.
  std::vector<std::string> copies{"tovak"};
  copies.insert(copies.end(), words.begin(), words.end());
  std::vector<char*> argv;
  for (std::string& word : copies) argv.push_back(word.data());
  argv.push_back(nullptr);
  CapturedOutput output;
  const tovak::Translation translation =
      tovak::translateArguments(static_cast<int>(copies.size()), argv.data());
  return LibraryAnswer{translation.accepted, translation.commandLine, output.finish()};
}

}  // namespace translate
