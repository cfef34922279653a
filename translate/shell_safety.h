// Whether dash and bash read a command line the library built as exactly the words it
// meant; the check lives beside the launcher's own (launcher/shell_syntax.h).
#ifndef TOVAK_TRANSLATE_SHELL_SAFETY_H
#define TOVAK_TRANSLATE_SHELL_SAFETY_H

#include "shell_syntax.h"

namespace translate {

using launcher::firstSyntaxByte;

}  // namespace translate

#endif  // TOVAK_TRANSLATE_SHELL_SAFETY_H
