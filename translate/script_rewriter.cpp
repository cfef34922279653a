#include "script_rewriter.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <set>

#include "fendix_location.h"
#include "invocation_finder.h"
#include "library_call.h"
#include "plain_values.h"
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

bool isNameByte(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-';
}

}  // namespace

bool isToolComment(std::string_view line) { return trimmed(line).substr(0, kMark.size()) == kMark; }

std::string toolComment(std::string_view reason) {
  return std::string(kMark) + std::string(reason);
}

bool mentionsLauncher(std::string_view line) {
  for (std::size_t at = line.find("tovak"); at != std::string_view::npos;
       at = line.find("tovak", at + 1)) {
    const bool startsName = at == 0 || !isNameByte(line[at - 1]);
    if (startsName && (at + 5 == line.size() || !isNameByte(line[at + 5]))) return true;
  }
  return false;
}

namespace {

// The texts the launcher prints around a run, which a Fendix line does not print.
constexpr std::string_view kLauncherTexts[] = {"translated command", "return code", "fendx"};

// Which of the launcher's texts a line of script code reads, or none; the words of the
// invocations on it (from, to: offsets in the line) are not reading.
std::string_view launcherTextIn(std::string_view line, const std::vector<Span>& invocations) {
  if (trimmed(line).substr(0, 1) == "#") return {};
  std::string lower(line);
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  for (const Span& invocation : invocations) {
    lower.replace(invocation.begin, invocation.end - invocation.begin,
                  invocation.end - invocation.begin, ' ');
  }
  for (const std::string_view text : kLauncherTexts) {
    if (lower.find(text) != std::string::npos) return text;
  }
  return {};
}

// A redirection target or a line as compared for naming the same file: "$OUT", $OUT and
// ${OUT} all name it.
std::string comparable(std::string_view text) {
  std::string kept;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') continue;
    if (text.substr(i, 2) == "${") {
      std::size_t end = i + 2;
      while (end < text.size() &&
             (std::isalnum(static_cast<unsigned char>(text[end])) || text[end] == '_'))
        ++end;
      if (end > i + 2 && end < text.size() && text[end] == '}') {
        kept.append("$").append(text.substr(i + 2, end - i - 2));
        i = end;
        continue;
      }
    }
    kept += text[i];
  }
  return kept;
}

struct Edit {
  std::size_t begin;
  std::size_t end;
  std::string text;
};

// The Fendix line, broken with a backslash-newline as often as the invocation it replaces
// was continued, each new line with the indent the old one had: before an option or a
// redirection where there are enough of them, else at any blank between words.
std::string brokenOver(const std::string& line, const std::vector<std::string>& redirections,
                       const std::vector<std::string>& indents) {
  std::vector<std::size_t> blanks, beforeOptions;  // outside the quotes the library adds
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') quoted = !quoted;
    if (line[i] != ' ' || quoted) continue;
    blanks.push_back(i);
    if (i + 1 < line.size() && line[i + 1] == '-') beforeOptions.push_back(i);
  }
  std::string joined = line;
  for (const std::string& redirection : redirections) {
    beforeOptions.push_back(joined.size());
    blanks.push_back(joined.size());
    joined += " " + redirection;
  }
  const std::vector<std::size_t>& at =
      beforeOptions.size() >= indents.size() ? beforeOptions : blanks;
  std::string out;
  std::size_t done = 0;
  for (std::size_t b = 0; b < indents.size(); ++b) {
    const std::size_t blank = at[(b + 1) * at.size() / (indents.size() + 1)];
    if (blank >= done) {
      out.append(joined, done, blank - done);
      out += " ";
      done = blank + 1;
    }
    out += "\\\n" + indents[b];
  }
  return out + joined.substr(done);
}

class Rewriter {
 public:
  Rewriter(std::string_view text, const RewriteOptions& options) : text_(text), options_(options) {}

  Rewrite run() {
    rewrite_ = asWritten(text_);
    for (std::size_t i = 0, start = 0; i < rewrite_.lines.size(); ++i) {
      starts_.push_back(start);
      start += rewrite_.lines[i].size() + 1;
    }
    if (text_.find("tovak") == std::string_view::npos && options_.launcherVariables.empty()) {
      return std::move(rewrite_);
    }
    comments_.resize(rewrite_.lines.size());
    const LexedScript script = lexShell(text_);
    tokens_ = &script.tokens;
    cleanStarts_ = script.lineStarts;
    uncertainFrom_ = script.uncertainFrom;
    uncertainBecause_ = script.uncertainBecause;
    const std::vector<Invocation> invocations =
        findInvocations(text_, script, options_.fendix, options_.launcherVariables);
    ifsAssigned_ = setsIfs(invocations);
    findReaders(invocations);
    std::vector<bool> invoked(rewrite_.lines.size());
    std::vector<bool> called(rewrite_.lines.size());  // a call or a Fendix line stands on it
    for (const Invocation& invocation : invocations) {
      for (std::size_t i = lineOf(invocation.begin); i <= lineOf(invocation.end); ++i)
        called[i] = true;
      if (invocation.isFendix) continue;
      invoked[lineOf(invocation.begin)] = true;
      judge(invocation);
    }
    for (std::size_t i = 0; i < rewrite_.lines.size(); ++i) {
      const std::string& line = rewrite_.lines[i];
      if (invoked[i] || isToolComment(line) || !mentionsLauncher(line)) continue;
      if (called[i] || starts_[i] + line.size() < uncertainFrom_) {
        ++rewrite_.mentions;
        rewrite_.findings.push_back({i + 1, "mentions tovak", 0});
        continue;
      }
      // Where quoting cannot be followed, another shell may read a call here.
      ++rewrite_.left;
      const std::string reason = oneLine("left as it is: after " + uncertainBecause_ +
                                         ", where quoting cannot be followed");
      rewrite_.findings.push_back({i + 1, reason, 0});
      comments_[anchorOf(starts_[i])].push_back(reason);
    }
    std::stable_sort(rewrite_.findings.begin(), rewrite_.findings.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    return finish(editedText());
  }

 private:
  std::size_t lineOf(std::size_t offset) const {
    return static_cast<std::size_t>(std::upper_bound(starts_.begin(), starts_.end(), offset) -
                                    starts_.begin()) -
           1;
  }

  // Comments go above the line where the command around an offset begins, never into a
  // quoted string or a here-document that spans lines; past the uncertain point a line
  // start may lie inside a quoted string.
  std::size_t anchorOf(std::size_t offset) const {
    const auto after = std::upper_bound(cleanStarts_.begin(), cleanStarts_.end(),
                                        std::min(offset, uncertainFrom_));
    return lineOf(*(after - 1));
  }

  void findReaders(const std::vector<Invocation>& invocations) {
    // The words of the invocations, which a rewrite replaces, and of the Fendix lines it
    // wrote, by line; not their redirections, which it keeps.
    std::vector<std::vector<Span>>& within = callWords_;
    within.resize(rewrite_.lines.size());
    for (const Invocation& invocation : invocations) {
      for (const Span& word : invocation.words) {
        for (std::size_t line = lineOf(word.begin); line <= lineOf(word.end); ++line) {
          const std::size_t end = starts_[line] + rewrite_.lines[line].size();
          within[line].push_back({std::max(word.begin, starts_[line]) - starts_[line],
                                  std::min(word.end, end) - starts_[line]});
        }
      }
    }
    for (std::size_t i = 0; i < rewrite_.lines.size(); ++i) {
      const std::string_view text = launcherTextIn(rewrite_.lines[i], within[i]);
      if (text.empty() || isToolComment(rewrite_.lines[i])) continue;
      readers_.push_back(i);
      ++rewrite_.readers;
      const std::string reason = "reads the launcher's own lines ('" + std::string(text) +
                                 "'), which a Fendix line does not print";
      rewrite_.findings.push_back({i + 1, reason, 0});
      comments_[anchorOf(starts_[i])].push_back(reason);
    }
  }

  // Why the launcher's own lines that the invocation prints are read by a line of the script,
  // or empty. A reader above the call counts too: it may be a function run after it.
  std::string readBack(const Invocation& invocation) const {
    for (const std::size_t reader : readers_) {
      const std::size_t begin = starts_[reader];
      const std::size_t end = begin + rewrite_.lines[reader].size();
      if (invocation.piped && end >= invocation.end && begin <= invocation.pipelineEnd) {
        return "its output is piped into a line that reads the launcher's own lines";
      }
      // The reader's text, the invocation's own redirections and every call's words blanked.
      std::vector<Span> blanked = callWords_[reader];
      const std::size_t from = std::max(begin, invocation.begin);
      const std::size_t to = std::min(end, invocation.end);
      if (from < to) blanked.push_back({from - begin, to - begin});
      std::string line = rewrite_.lines[reader];
      for (const Span& span : blanked)
        line.replace(span.begin, span.end - span.begin, span.end - span.begin, ' ');
      line = comparable(line);
      for (const std::string& target : invocation.outputs) {
        if (line.find(comparable(target)) != std::string::npos) {
          return "its output goes to " + oneLine(target) +
                 ", which a line reads for the launcher's own lines";
        }
      }
    }
    return "";
  }

  // Why sh would split the call's command otherwise than bash, which the lexer follows, or
  // empty: dash reads "10>" as the word 10 and ">", and "&>" as "&" and ">", so the words
  // the rewrite moves ahead of the redirections would land in another command.
  std::string readByShOtherwise(const Invocation& invocation) const {
    const std::vector<Token>& tokens = *tokens_;
    const auto inCommand = [&](std::size_t k) {
      return tokens[k].kind == TokenKind::kWord || tokens[k].kind == TokenKind::kRedirection;
    };
    std::size_t first = static_cast<std::size_t>(
        std::partition_point(tokens.begin(), tokens.end(),
                             [&](const Token& token) { return token.end <= invocation.begin; }) -
        tokens.begin());
    if (first == tokens.size() || tokens[first].begin != invocation.begin) return "";
    while (first > 0 && inCommand(first - 1)) --first;
    std::string both;  // the &> or &>> met so far
    for (std::size_t k = first; k < tokens.size() && inCommand(k); ++k) {
      const std::string& op = tokens[k].op;
      const std::size_t digits = std::min(op.find_first_not_of("0123456789"), op.size());
      if (tokens[k].kind == TokenKind::kRedirection && digits > 1) {
        return "a redirection of descriptor " + op.substr(0, digits) +
               ", which sh reads as the word " + op.substr(0, digits) + " and " + op.substr(digits);
      }
      if (op == "&>" || op == "&>>") both = op;
      if (!both.empty() && tokens[k].kind == TokenKind::kWord) {
        return "a word after " + both + ", which sh reads as the end of the command";
      }
    }
    return "";
  }

  // Whether a word of the script that is not a call's own holds IFS= (tovak co - IFS= sets
  // nothing, and its Fendix line drops the word; a comment, such as the tool's, sets nothing).
  bool setsIfs(const std::vector<Invocation>& invocations) const {
    std::set<std::size_t> callWords;
    for (const Invocation& invocation : invocations) {
      for (const Span& word : invocation.words) callWords.insert(word.begin);
    }
    return std::any_of(tokens_->begin(), tokens_->end(), [&](const Token& token) {
      const Word& word = token.word;
      return callWords.count(word.begin) == 0 &&
             text_.substr(word.begin, word.end - word.begin).find("IFS=") != std::string::npos;
    });
  }

  void judge(const Invocation& invocation) {
    if (invocation.end > uncertainFrom_) {
      return leave(invocation, "after " + uncertainBecause_ + ", where quoting cannot be followed");
    }
    if (!invocation.unknownBecause.empty() && !invocation.valuesVary) {
      return leave(invocation, invocation.unknownBecause);
    }
    if (const std::string reason = readByShOtherwise(invocation); !reason.empty()) {
      return leave(invocation, reason);
    }
    // Values that hold expansions are asked as placeholders; without the option such a call
    // stays left as it always was, and says what it would become.
    const bool assumed = invocation.valuesVary;
    const auto leaveFor = [&](const std::string& reason) {
      leave(invocation,
            assumed && !options_.assumePlainValues ? invocation.unknownBecause : reason);
    };
    std::vector<std::string> words;
    for (const Word& word : invocation.arguments) words.push_back(word.value);
    if (assumed) {
      Placeholders held = withPlaceholders(invocation.arguments, ifsAssigned_);
      if (!held.whyNot.empty()) return leaveFor(held.whyNot);
      words = std::move(held.words);
    }
    if (const std::string reason = readBack(invocation); !reason.empty()) return leaveFor(reason);
    std::vector<std::string> indents;
    if (!continuedLines(invocation, indents)) return leaveFor("it spans lines");
    const FendixLocation fendix = locateFendix(invocation.program.value, options_.fendix);
    if (!fendix.whyNot.empty()) return leaveFor(fendix.whyNot);
    const LibraryAnswer answer = askLibrary(words);
    if (!answer.accepted && assumed && !options_.assumePlainValues) {
      return leave(invocation, invocation.unknownBecause);
    }
    if (!answer.accepted) {
      ++rewrite_.refused;
      return note(invocation, "refused by the library: " + oneLine(answer.messages));
    }
    if (const std::optional<char> byte = firstSyntaxByte(answer.commandLine)) {
      return leaveFor("the Fendix line would hand '" + oneLine(std::string(1, *byte)) +
                      "' to the shell as syntax");
    }
    std::vector<std::string> redirections;
    for (const Span& redirection : invocation.redirections) {
      redirections.emplace_back(
          text_.substr(redirection.begin, redirection.end - redirection.begin));
    }
    const std::string arguments =
        assumed ? withExpansions(answer.commandLine, invocation.arguments) : answer.commandLine;
    const std::string line = fendix.program + " " + arguments;
    // Its words stay out of reading for the launcher's lines only while they are its own; the
    // program word is always its own, and may well be /opt/fendx/Fendix.
    if (const std::string_view text = launcherTextIn(arguments, {}); !text.empty()) {
      return leaveFor("a value holds '" + std::string(text) +
                      "', which would make its Fendix line a line reading the launcher's lines");
    }
    if (assumed && !options_.assumePlainValues) {
      ++rewrite_.assumable;
      return leave(invocation, invocation.unknownBecause + "; with --assume-plain-values: " +
                                   oneLine(brokenOver(line, redirections, {})));
    }
    ++rewrite_.translated;
    rewrite_.findings.push_back(
        {lineOf(invocation.begin) + 1,
         "legacy syntax, translates to: " + oneLine(brokenOver(line, redirections, {})),
         lineOf(invocation.end) + 1});
    edits_.push_back({invocation.begin, invocation.end, brokenOver(line, redirections, indents)});
    if (invocation.piped) comments_[anchorOf(invocation.begin)].emplace_back(kPiped);
  }

  // The indent of each line the invocation is continued onto with a backslash-newline
  // between its words; false when a line ends inside it otherwise (in a quoted value). Line
  // ends inside a redirection stay where they are.
  bool continuedLines(const Invocation& invocation, std::vector<std::string>& indents) const {
    for (std::size_t at = invocation.begin; (at = text_.find('\n', at)) < invocation.end; ++at) {
      const bool carried = std::any_of(
          invocation.redirections.begin(), invocation.redirections.end(),
          [&](const Span& redirection) { return redirection.begin < at && at < redirection.end; });
      if (carried) continue;
      if (text_[at - 1] != '\\') return false;
      const std::size_t indent = std::min(text_.find_first_not_of(" \t", at + 1), text_.size());
      indents.emplace_back(text_.substr(at + 1, indent - at - 1));
    }
    return true;
  }

  void leave(const Invocation& invocation, const std::string& reason) {
    ++rewrite_.left;
    note(invocation, "left as it is: " + reason);
  }

  // A reason may quote the script's words, line ends among them: it stays on one line.
  void note(const Invocation& invocation, std::string reason) {
    reason = oneLine(reason);
    rewrite_.findings.push_back({lineOf(invocation.begin) + 1, reason, 0});
    comments_[anchorOf(invocation.begin)].push_back(std::move(reason));
  }

  std::string editedText() {
    std::sort(edits_.begin(), edits_.end(),
              [](const Edit& a, const Edit& b) { return a.begin < b.begin; });
    std::string edited;
    std::size_t done = 0;
    for (const Edit& edit : edits_) {
      edited.append(text_, done, edit.begin - done);
      edited += edit.text;
      done = edit.end;
    }
    edited.append(text_, done, std::string_view::npos);
    return edited;
  }

  // The rewrite, from the edited text, which has a line for every line of the script.
  Rewrite finish(const std::string& edited) {
    rewrite_.result.clear();
    std::size_t start = 0;
    for (std::size_t i = 0; i < rewrite_.lines.size(); ++i) {
      const std::size_t end = std::min(edited.find('\n', start), edited.size());
      rewrite_.result.push_back(commentsAbove(i));
      rewrite_.result.back().push_back(edited.substr(start, end - start));
      start = end + 1;
    }
    return std::move(rewrite_);
  }

  std::vector<std::string> commentsAbove(std::size_t i) const {
    std::vector<std::string> out;
    const std::string& line = rewrite_.lines[i];
    for (const std::string& reason : comments_[i]) {
      std::string comment = std::string(indentOf(line)) + toolComment(reason);
      if (!rewrite_.saysAbove(i, comment) &&
          std::find(out.begin(), out.end(), comment) == out.end()) {
        out.push_back(std::move(comment));
      }
    }
    return out;
  }

  // Whether the tool's comment lines right above line i already say this.
  std::string_view text_;
  const RewriteOptions& options_;
  bool ifsAssigned_ = false;
  Rewrite rewrite_;
  std::vector<std::size_t> starts_;
  const std::vector<Token>* tokens_ = nullptr;  // the script's, while run() reads it
  std::vector<std::size_t> cleanStarts_;
  std::vector<std::size_t> readers_;
  std::vector<std::vector<Span>> callWords_;  // by line, offsets in the line
  std::size_t uncertainFrom_ = std::string::npos;
  std::string uncertainBecause_;
  std::vector<Edit> edits_;
  std::vector<std::vector<std::string>> comments_;
};

}  // namespace

bool Rewrite::lineChanged(std::size_t i) const {
  return result[i].size() != 1 || result[i][0] != lines[i];
}

Counts& Counts::operator+=(const Counts& other) {
  translated += other.translated;
  left += other.left;
  refused += other.refused;
  mentions += other.mentions;
  readers += other.readers;
  assumable += other.assumable;
  return *this;
}

bool Rewrite::saysAbove(std::size_t i, std::string_view comment) const {
  for (std::size_t above = i; above > 0 && isToolComment(lines[above - 1]); --above) {
    if (trimmed(lines[above - 1]) == trimmed(comment)) return true;
  }
  return false;
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

Rewrite asWritten(std::string_view text) {
  Rewrite rewrite;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    rewrite.lines.emplace_back(text.substr(start, end - start));
    rewrite.result.push_back({rewrite.lines.back()});
    start = end + 1;
  }
  rewrite.finalLineEnd = text.empty() || text.back() == '\n';
  return rewrite;
}

Rewrite rewriteScript(std::string_view text, const RewriteOptions& options) {
  return Rewriter(text, options).run();
}

}  // namespace translate
