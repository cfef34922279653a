// The launcher's own directory, where it loads the library from and where the library runs
// Fendix from; shell_syntax.h says whether the shell can be handed it unquoted.
#ifndef TOVAK_LAUNCHER_OWN_DIRECTORY_H
#define TOVAK_LAUNCHER_OWN_DIRECTORY_H

#include <optional>
#include <string>

#include "shell_syntax.h"

namespace launcher {

// The target of /proc/self/exe up to its last "/"; nullopt when the link cannot be read or
// may be cut short, since a guess could load a foreign library or run a foreign Fendix.
std::optional<std::string> ownDirectory();

}  // namespace launcher

#endif  // TOVAK_LAUNCHER_OWN_DIRECTORY_H
