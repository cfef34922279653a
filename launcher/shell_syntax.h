// Which bytes dash and bash read as syntax rather than as part of a word, for the two texts
// this project hands the shell unquoted: the launcher's directory, and the Fendix line that
// tovak-translate writes into a script.
#ifndef TOVAK_LAUNCHER_SHELL_SYNTAX_H
#define TOVAK_LAUNCHER_SHELL_SYNTAX_H

#include <optional>
#include <string>
#include <string_view>

namespace launcher {

// The first byte of path that the shell could read as syntax (anything but ASCII letters and
// digits and "/._-+,:@%="), or nullopt when there is none. Strict, blanks included: the
// directory stands in front of every command the library runs.
std::optional<unsigned char> firstShellSyntaxByte(const std::string& path);

// The first byte of a command line the library built that a shell would read as syntax, or
// nullopt when the line is a plain list of words. The library joins values as they are and
// puts double quotes around a value that holds a blank, so blanks and those quotes pass.
std::optional<char> firstSyntaxByte(std::string_view commandLine);

}  // namespace launcher

#endif  // TOVAK_LAUNCHER_SHELL_SYNTAX_H
