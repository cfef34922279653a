// Whether dash and bash read a command line the library built as exactly the words it
// meant. The library joins values as they are and puts double quotes around a value that
// holds a blank, so a value can carry shell syntax into the line.
#ifndef TOVAK_TRANSLATE_SHELL_SAFETY_H
#define TOVAK_TRANSLATE_SHELL_SAFETY_H

#include <optional>
#include <string_view>

namespace translate {

// The first byte that a shell would read as syntax rather than as part of a word, or
// nullopt when the line is a plain list of words.
std::optional<char> firstSyntaxByte(std::string_view commandLine);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_SHELL_SAFETY_H
