// The command line of tovak-translate. In line mode the options come first and everything
// from the first other word on is the legacy line, so that its own options reach the library.
#ifndef TOVAK_TRANSLATE_OPTIONS_H
#define TOVAK_TRANSLATE_OPTIONS_H

#include <string>
#include <vector>

namespace translate {

enum class Output { kScripts, kDiff, kInPlace, kCheck };

struct Options {
  bool script = false;       // --script or --crontab: files, not a legacy line
  bool crontab = false;      // the files are crontabs
  bool crontabUser = false;  // ... as "crontab -l" prints them, with no user field
  bool assumePlainValues = false;
  Output output = Output::kScripts;
  bool backup = true;
  std::string backupDir;  // where --in-place keeps FILE.orig; empty: beside the file
  bool help = false;
  bool version = false;
  std::string fendix;                 // empty: named after each invocation's launcher
  std::vector<std::string> operands;  // the legacy words, or the script files
  std::string error;                  // not empty when the command line makes no sense
};

Options parseOptions(int argc, char** argv);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_OPTIONS_H
