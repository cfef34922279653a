// Writes a rewrite as a unified diff that "patch -p0" applies to the file by its own name.
#ifndef TOVAK_TRANSLATE_DIFF_WRITER_H
#define TOVAK_TRANSLATE_DIFF_WRITER_H

#include <string>

#include "script_rewriter.h"

namespace translate {

// Empty when nothing changed; three lines of context around each change.
std::string unifiedDiff(const std::string& name, const Rewrite& rewrite);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_DIFF_WRITER_H
