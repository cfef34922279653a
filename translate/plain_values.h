// Calls whose values hold parameter expansions ("$REPO", ${U}): the Fendix line they become
// when every expansion has a plain value, one that the library copies or cuts as it stands
// and the shell reads back unchanged. Each expansion is asked of the library as a
// placeholder, a plain value that none of its words holds, and written back in double quotes.
#ifndef TOVAK_TRANSLATE_PLAIN_VALUES_H
#define TOVAK_TRANSLATE_PLAIN_VALUES_H

#include <string>
#include <vector>

#include "shell_lexer.h"

namespace translate {

struct Placeholders {
  std::vector<std::string> words;  // the legacy words, each expansion a placeholder
  std::string whyNot;              // not empty when no rewrite holds for every plain value
};

// ifsAssigned: the script sets IFS, so an unquoted expansion may split even a plain value.
Placeholders withPlaceholders(const std::vector<Word>& arguments, bool ifsAssigned);

// The library's line for those words, each placeholder written back as its expansion inside
// double quotes.
std::string withExpansions(const std::string& commandLine, const std::vector<Word>& arguments);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_PLAIN_VALUES_H
