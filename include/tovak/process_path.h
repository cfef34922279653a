// Where things are on disk: the running executable's directory (where Fendix is looked
// for), the directory of a loaded module, and the temporary directory.
#ifndef TOVAK_PROCESS_PATH_H
#define TOVAK_PROCESS_PATH_H

#include <string>

#include "tovak/export.h"

// Directory of the running executable, with its trailing "/".
TOVAK_API std::string GetCurProcessPath();

// The Linux way of finding it: the target of /proc/<pid>/exe up to its last "/".
// "/dev/null/" when the link cannot be read or is cut short (no /proc, or a path of 4096
// bytes or more): a directory that cannot hold a program, so that nothing is run from the
// current directory in its place.
TOVAK_API std::string GetCurProcessPathLin();

// Directory of the loaded module that holds the address, with its trailing "/"; empty when
// no module holds it, and "/dev/null/" when its path cannot be resolved.
TOVAK_API std::string GetModulePathLin(void* address);

// Always "/tmp/".
TOVAK_API std::string GetSysTempPath();

#endif  // TOVAK_PROCESS_PATH_H
