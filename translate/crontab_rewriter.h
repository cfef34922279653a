// Rewrites a crontab. The command field of each entry is what cron hands to "/bin/sh -c",
// so it is rewritten exactly as a script line would be; the time fields, the user field,
// the blanks between fields, environment lines, comments and blank lines come through byte
// for byte.
#ifndef TOVAK_TRANSLATE_CRONTAB_REWRITER_H
#define TOVAK_TRANSLATE_CRONTAB_REWRITER_H

#include <string>
#include <string_view>

#include "script_rewriter.h"

namespace translate {

// userFormat: a user's crontab as "crontab -l" prints it, with no user field; otherwise the
// system format of /etc/crontab and /etc/cron.d. Throws NestingTooDeep as rewriteScript does.
Rewrite rewriteCrontab(std::string_view text, const RewriteOptions& options, bool userFormat);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_CRONTAB_REWRITER_H
