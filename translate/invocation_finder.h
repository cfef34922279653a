// Finds every place where a script runs the legacy launcher: "tovak", or a path ending in
// "/tovak", in command position or behind wrappers such as sudo, env or timeout; through a
// variable the script sets to it; as the command another program runs later, from its words
// or its standard input; or among the words of a program the tool does not know. Case
// patterns, function names and the words of a for list are not commands.
#ifndef TOVAK_TRANSLATE_INVOCATION_FINDER_H
#define TOVAK_TRANSLATE_INVOCATION_FINDER_H

#include <cstddef>
#include <set>
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
  std::vector<Span> words;           // the program word and the arguments, in the script
  std::vector<Span> redirections;    // after the program word, in order
  std::vector<std::string> outputs;  // where its standard output goes, as written (its own
                                     // redirections, a compound command's, exec's); not /dev/null
  std::string unknownBecause;        // why it must stay as written; empty when it may be translated
  bool valuesVary = false;           // unknown only for parameter expansions in its arguments
  bool piped = false;                // its standard output feeds another command
  bool isFendix = false;             // a Fendix line already: only its words count, to readers
  std::size_t pipelineEnd = 0;       // where the pipeline it stands in ends
};

// Every invocation in the script, in the order of the text, and every Fendix line (a program
// named Fendix, or fendix when that is not empty).
std::vector<Invocation> findInvocations(std::string_view text, const LexedScript& script,
                                        const std::string& fendix,
                                        const std::set<std::string>& launcherVariables);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_INVOCATION_FINDER_H
