#include "script_rewriter.h"

#include <algorithm>
#include <cctype>
#include <optional>

#include "fendix_location.h"
#include "invocation_finder.h"
#include "library_call.h"
#include "reason_text.h"
#include "shell_lexer.h"
#include "shell_safety.h"

namespace translate {
namespace {

constexpr std::string_view kMark = "# tovak-translate: ";
constexpr std::string_view kPiped =
    "output piped: the launcher's lines around the run are no longer printed";

std::string_view trimmed(std::string_view line) {
  const std::size_t start = line.find_first_not_of(" \t");
  return start == std::string_view::npos ? std::string_view() : line.substr(start);
}

std::string_view indentOf(std::string_view line) {
  return line.substr(0, line.size() - trimmed(line).size());
}

bool isToolComment(std::string_view line) { return trimmed(line).substr(0, kMark.size()) == kMark; }

bool isNameByte(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-';
}

bool mentionsLauncher(std::string_view line) {
  for (std::size_t at = line.find("tovak"); at != std::string_view::npos;
       at = line.find("tovak", at + 1)) {
    const bool startsName = at == 0 || !isNameByte(line[at - 1]);
    if (startsName && (at + 5 == line.size() || !isNameByte(line[at + 5]))) return true;
  }
  return false;
}

struct Edit {
  std::size_t begin;
  std::size_t end;
  std::string text;
};

class Rewriter {
 public:
  Rewriter(std::string_view text, const std::string& fendix) : text_(text), fendix_(fendix) {}

  Rewrite run() {
    splitLines();
    const LexedScript script = lexShell(text_);
    cleanStarts_ = script.lineStarts;
    uncertainFrom_ = script.uncertainFrom;
    uncertainBecause_ = script.uncertainBecause;
    edits_.resize(rewrite_.lines.size());
    comments_.resize(rewrite_.lines.size());
    std::vector<bool> invoked(rewrite_.lines.size());
    for (const Invocation& invocation : findInvocations(text_, script)) {
      invoked[lineOf(invocation.begin)] = true;
      judge(invocation);
    }
    for (std::size_t i = 0; i < rewrite_.lines.size(); ++i) {
      if (!invoked[i] && !isToolComment(rewrite_.lines[i]) && mentionsLauncher(rewrite_.lines[i])) {
        rewrite_.findings.push_back({i + 1, "mentions tovak"});
      }
      rewrite_.result.push_back(rewrittenLine(i));
    }
    std::stable_sort(rewrite_.findings.begin(), rewrite_.findings.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    return std::move(rewrite_);
  }

 private:
  void splitLines() {
    std::size_t start = 0;
    while (start < text_.size()) {
      const std::size_t end = std::min(text_.find('\n', start), text_.size());
      starts_.push_back(start);
      rewrite_.lines.emplace_back(text_.substr(start, end - start));
      start = end + 1;
    }
    rewrite_.finalLineEnd = text_.empty() || text_.back() == '\n';
  }

  std::size_t lineOf(std::size_t offset) const {
    return static_cast<std::size_t>(std::upper_bound(starts_.begin(), starts_.end(), offset) -
                                    starts_.begin()) -
           1;
  }

  // Comments go above the line where the command around the invocation begins, never into
  // a quoted string or a here-document that spans lines.
  std::size_t anchorOf(std::size_t offset) const {
    const auto after = std::upper_bound(cleanStarts_.begin(), cleanStarts_.end(), offset);
    return lineOf(*(after - 1));
  }

  void judge(const Invocation& invocation) {
    const std::size_t line = lineOf(invocation.begin);
    if (invocation.begin >= uncertainFrom_) {
      return leave(invocation, "after " + uncertainBecause_ + ", where quoting cannot be followed");
    }
    if (!invocation.unknownBecause.empty()) return leave(invocation, invocation.unknownBecause);
    if (lineOf(invocation.end) != line) return leave(invocation, "it spans lines");
    const FendixLocation fendix = locateFendix(invocation.program.value, fendix_);
    if (!fendix.whyNot.empty()) return leave(invocation, fendix.whyNot);
    std::vector<std::string> words;
    for (const Word& word : invocation.arguments) words.push_back(word.value);
    const LibraryAnswer answer = askLibrary(words);
    if (!answer.accepted) {
      ++rewrite_.refused;
      return note(invocation, "refused by the library: " + oneLine(answer.messages));
    }
    if (const std::optional<char> byte = firstSyntaxByte(answer.commandLine)) {
      return leave(invocation, "the Fendix line would hand '" + oneLine(std::string(1, *byte)) +
                                   "' to the shell as syntax");
    }
    std::string replacement = fendix.program + " " + answer.commandLine;
    for (const std::string& redirection : invocation.redirections) replacement += " " + redirection;
    ++rewrite_.translated;
    rewrite_.findings.push_back(
        {line + 1, "legacy syntax, translates to: " + oneLine(replacement)});
    edits_[line].push_back(
        {invocation.begin - starts_[line], invocation.end - starts_[line], std::move(replacement)});
    if (invocation.piped) comments_[anchorOf(invocation.begin)].emplace_back(kPiped);
  }

  void leave(const Invocation& invocation, const std::string& reason) {
    ++rewrite_.left;
    note(invocation, "left as it is: " + reason);
  }

  void note(const Invocation& invocation, std::string reason) {
    rewrite_.findings.push_back({lineOf(invocation.begin) + 1, reason});
    // Past the uncertain point a line start may lie inside a quoted string.
    comments_[anchorOf(std::min(invocation.begin, uncertainFrom_))].push_back(std::move(reason));
  }

  std::vector<std::string> rewrittenLine(std::size_t i) const {
    std::vector<std::string> out;
    const std::string& line = rewrite_.lines[i];
    for (const std::string& reason : comments_[i]) {
      std::string comment = std::string(indentOf(line)) + std::string(kMark) + reason;
      if (!alreadyAbove(i, comment) && std::find(out.begin(), out.end(), comment) == out.end()) {
        out.push_back(std::move(comment));
      }
    }
    std::string edited = line;
    for (auto edit = edits_[i].rbegin(); edit != edits_[i].rend(); ++edit) {
      edited.replace(edit->begin, edit->end - edit->begin, edit->text);
    }
    out.push_back(std::move(edited));
    return out;
  }

  // Whether the tool's comment lines right above line i already say this.
  bool alreadyAbove(std::size_t i, std::string_view comment) const {
    for (std::size_t above = i; above > 0 && isToolComment(rewrite_.lines[above - 1]); --above) {
      if (trimmed(rewrite_.lines[above - 1]) == trimmed(comment)) return true;
    }
    return false;
  }

  std::string_view text_;
  const std::string& fendix_;
  Rewrite rewrite_;
  std::vector<std::size_t> starts_;
  std::vector<std::size_t> cleanStarts_;
  std::size_t uncertainFrom_ = std::string::npos;
  std::string uncertainBecause_;
  std::vector<std::vector<Edit>> edits_;
  std::vector<std::vector<std::string>> comments_;
};

}  // namespace

bool Rewrite::lineChanged(std::size_t i) const {
  return result[i].size() != 1 || result[i][0] != lines[i];
}

bool Rewrite::changed() const {
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lineChanged(i)) return true;
  }
  return false;
}

std::string Rewrite::text() const {
  std::string joined;
  for (const std::vector<std::string>& became : result) {
    for (const std::string& line : became) joined += line + '\n';
  }
  if (!finalLineEnd && !joined.empty()) joined.pop_back();
  return joined;
}

Rewrite rewriteScript(std::string_view text, const std::string& fendix) {
  return Rewriter(text, fendix).run();
}

}  // namespace translate
