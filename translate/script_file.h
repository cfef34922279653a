// Reading a script, and replacing it in place so that no reader ever sees half of it.
#ifndef TOVAK_TRANSLATE_SCRIPT_FILE_H
#define TOVAK_TRANSLATE_SCRIPT_FILE_H

#include <string>

namespace translate {

// "-" reads standard input. On failure error says why.
bool readScript(const std::string& path, std::string& text, std::string& error);

// Writes text to a temporary file beside the real file behind path (symbolic links are
// followed), with that file's mode, and renames it over the file. With a backup, the old
// file stays as FILE.orig beside the real file, or in backupDir when that is given; an
// existing backup refuses the replacement.
bool replaceScript(const std::string& path, const std::string& text, bool backup,
                   const std::string& backupDir, std::string& error);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_SCRIPT_FILE_H
