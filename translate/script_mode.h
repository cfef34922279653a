// Rewrites, diffs or checks every script named on the command line and sums up on
// standard error.
#ifndef TOVAK_TRANSLATE_SCRIPT_MODE_H
#define TOVAK_TRANSLATE_SCRIPT_MODE_H

#include "options.h"

namespace translate {

// 0 when every invocation was translated (with --check: nothing listed), 2 when one was
// left or refused, 1 when a file could not be read or written.
int runScripts(const Options& options);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_SCRIPT_MODE_H
