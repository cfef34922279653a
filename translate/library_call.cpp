#include "library_call.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "entry/translation.h"

namespace translate {

CapturedOutput::CapturedOutput() {
  std::fflush(stdout);
  saved_ = dup(STDOUT_FILENO);
  file_ = saved_ >= 0 ? std::tmpfile() : nullptr;
  if (file_ == nullptr || dup2(fileno(file_), STDOUT_FILENO) < 0) {
    const int error = errno;
    release();
    throw CaptureFailed{error};
  }
}

CapturedOutput::~CapturedOutput() { release(); }

std::string CapturedOutput::written() const {
  // pread leaves the offset alone, which the file shares with standard output.
  struct stat status {};
  fstat(fileno(file_), &status);
  std::string text(static_cast<std::size_t>(status.st_size), '\0');
  if (pread(fileno(file_), text.data(), text.size(), 0) != static_cast<ssize_t>(text.size())) {
    text.clear();
  }
  return text;
}

std::string CapturedOutput::finish() {
  std::fflush(stdout);
  dup2(saved_, STDOUT_FILENO);
  return written();
}

void CapturedOutput::release() {
  if (file_ != nullptr) std::fclose(file_);
  if (saved_ >= 0) close(saved_);
}

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
