// Writable argument vectors built from strings, and a one-call translation of a legacy line
// that captures what the library prints on the way.
#ifndef TOVAK_TESTS_LEGACY_LINE_H
#define TOVAK_TESTS_LEGACY_LINE_H

#include <string>
#include <vector>

class ArgumentVector {
 public:
  explicit ArgumentVector(std::vector<std::string> arguments);
  int argc() { return static_cast<int>(pointers_.size()); }
  char** argv() { return pointers_.data(); }
  const std::vector<std::string>& strings() const { return storage_; }

 private:
  std::vector<std::string> storage_;
  std::vector<char*> pointers_;
};

struct TranslationOutcome {
  bool accepted;
  std::string commandLine;
  std::string printed;
};

// Translates "tovak <words...>" as dll_main would, without launching anything.
TranslationOutcome translateLine(const std::vector<std::string>& words);

// What every accepted line ends with.
inline const std::string kOutputOption = " --output /var/log/Zantor_Support/";

#endif  // TOVAK_TESTS_LEGACY_LINE_H
