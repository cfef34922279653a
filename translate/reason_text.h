// Makes any text fit on one comment or report line: the reasons the tool gives quote the
// library's messages and the user's values, which may hold line ends or control bytes.
#ifndef TOVAK_TRANSLATE_REASON_TEXT_H
#define TOVAK_TRANSLATE_REASON_TEXT_H

#include <string>
#include <string_view>

namespace translate {

// Line ends and blanks at the end dropped, then \n, \r, \t and other control bytes written as
// escapes.
std::string oneLine(std::string_view text);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_REASON_TEXT_H
