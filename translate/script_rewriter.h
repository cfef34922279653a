// Rewrites one script: every invocation of the launcher that can be translated safely
// becomes the Fendix line, every other one stays as written under a comment saying why.
#ifndef TOVAK_TRANSLATE_SCRIPT_REWRITER_H
#define TOVAK_TRANSLATE_SCRIPT_REWRITER_H

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace translate {

// What --check lists: a line number from 1 and what is on that line.
struct Finding {
  std::size_t line = 0;
  std::string reason;
  std::size_t lastLine = 0;  // where the invocation it is about ends, when it is rewritten
};

// What the summary counts, for one text or many.
struct Counts {
  int translated = 0;
  int left = 0;
  int refused = 0;
  int mentions = 0;   // lines that name tovak but run no invocation
  int readers = 0;    // lines that read the launcher's own lines
  int assumable = 0;  // left, but translated with plain values assumed

  Counts& operator+=(const Counts& other);
};

struct Rewrite : Counts {
  std::vector<std::string> lines;                // the script's lines, without line ends
  std::vector<std::vector<std::string>> result;  // what each of them became
  bool finalLineEnd = true;                      // the last line ended with a line end
  std::vector<Finding> findings;  // invocations still in legacy syntax, mentions, readers

  bool lineChanged(std::size_t i) const;  // line i became anything but itself
  // Whether the tool's comment lines right above line i say this comment already.
  bool saysAbove(std::size_t i, std::string_view comment) const;
  bool changed() const;
  std::string text() const;  // the rewritten script
};

// Whether a line names tovak as a word of its own; whether it is one of the tool's comments.
bool mentionsLauncher(std::string_view line);
bool isToolComment(std::string_view line);
std::string toolComment(std::string_view reason);  // the comment line that gives the reason

// The text's lines, each written as it is, nothing counted.
Rewrite asWritten(std::string_view text);

struct RewriteOptions {
  std::string fendix;              // when not empty, names the Fendix of every rewritten line
  bool assumePlainValues = false;  // translate calls whose values hold parameter expansions
  std::set<std::string> launcherVariables;  // set to tovak before the text runs (by cron)
};

// A text that does not hold "tovak" comes back as it is, with nothing counted.
Rewrite rewriteScript(std::string_view text, const RewriteOptions& options);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_SCRIPT_REWRITER_H
