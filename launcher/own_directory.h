// The launcher's own directory, where it loads the library from and where the library runs
// Fendix from, and whether the shell can be handed that directory unquoted.
#ifndef TOVAK_LAUNCHER_OWN_DIRECTORY_H
#define TOVAK_LAUNCHER_OWN_DIRECTORY_H

#include <optional>
#include <string>

namespace launcher {

// The target of /proc/self/exe up to its last "/"; nullopt when the link cannot be read or
// may be cut short, since a guess could load a foreign library or run a foreign Fendix.
std::optional<std::string> ownDirectory();

// The first byte of path that the shell could read as syntax (anything but ASCII letters and
// digits and "/._-+,:@%="), or nullopt when there is none.
std::optional<unsigned char> firstShellSyntaxByte(const std::string& path);

}  // namespace launcher

#endif  // TOVAK_LAUNCHER_OWN_DIRECTORY_H
