// Finds where a script runs the legacy launcher: "tovak", or a path ending in "/tovak", in
// command position, including inside command substitutions, which are reported as such.
#ifndef TOVAK_TRANSLATE_INVOCATION_FINDER_H
#define TOVAK_TRANSLATE_INVOCATION_FINDER_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "shell_lexer.h"

namespace translate {

struct Invocation {
  std::size_t begin = 0;  // the program word
  std::size_t end = 0;    // past the last word or redirection of the simple command
  Word program;
  std::vector<Word> arguments;
  std::vector<std::string> redirections;  // as written, in order
  std::string unknownBecause;             // why the words cannot be known before it runs
  bool piped = false;                     // its standard output feeds another command
};

// Every invocation in the script, in the order of the text.
std::vector<Invocation> findInvocations(std::string_view text, const LexedScript& script);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_INVOCATION_FINDER_H
