#include "shell_lexer.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <memory>

namespace translate {
namespace {

// Far beyond what a script written by hand nests.
constexpr int kMaxNesting = 64;

constexpr const char* kExpansion = "a $ expansion";
constexpr const char* kBackquote = "a backquote";
constexpr const char* kContinuation = "a line continuation";

bool isBlank(char c) { return c == ' ' || c == '\t'; }
bool endsWord(char c) {
  return c == '\n' || isBlank(c) || (c != '\0' && std::strchr(";&|()<>", c) != nullptr);
}
bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The reserved words after which a command begins.
bool isReserved(const std::string& word) {
  for (const char* reserved :
       {"!", "{", "if", "then", "else", "elif", "while", "until", "do", "time"}) {
    if (word == reserved) return true;
  }
  return false;
}

void noteUnknown(Word& word, const char* reason) {
  if (word.unknownBecause.empty()) word.unknownBecause = reason;
  word.onlyParameters = word.onlyParameters && std::strcmp(reason, kExpansion) == 0;
}

// The name a simple parameter expansion reads ("$REPO", "${REPO}", "$1"), or empty for any
// other expansion.
std::string parameterName(std::string_view expansion) {
  std::string_view name = expansion.substr(1);
  if (name.size() >= 2 && name.front() == '{' && name.back() == '}') {
    name = name.substr(1, name.size() - 2);
  }
  const auto isNameByte = [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
  };
  if (name.size() == 1 && isDigit(name[0]) && name[0] != '0') return std::string(name);
  if (name.empty() || isDigit(name[0]) || !std::all_of(name.begin(), name.end(), isNameByte))
    return "";
  return std::string(name);
}

struct HereDocument {
  std::string delimiter;
  bool stripTabs = false;
  bool expands = false;
};

// The closing ")" of each "(" on one line of a text.
struct LineParentheses {
  std::size_t begin = 0;
  std::size_t end = 0;               // the line is [begin, end); none yet when empty
  std::vector<std::size_t> closing;  // by offset from begin; npos where it does not close
};

class Lexer {
 public:
  explicit Lexer(std::string_view text) : text_(text) {}

  LexedScript run() {
    script_.lineStarts.push_back(0);
    lex();
    return std::move(script_);
  }

 private:
  // Reads tokens to the end, or, inside a $(...), to just past the ")" that closes it.
  void lex() {
    int parentheses = 0;
    // Where a command may begin, and so a reserved word stand: after an operator, a line end,
    // a reserved word or a function's name; after a redirection too, which errs on the safe side.
    bool commandStart = true;
    bool functionName = false;
    while (pos_ < text_.size()) {
      const char c = text_[pos_];
      if (isBlank(c)) {
        ++pos_;
      } else if (c == '\\' && at(pos_ + 1) == '\n') {
        pos_ += 2;
      } else if (c == '#') {
        pos_ = lineEnd(pos_);
      } else {
        Token token = c == '\n' ? readNewline() : readToken();
        const bool mayBeReserved =
            token.kind == TokenKind::kWord && commandStart && !token.word.quoted;
        if (token.kind == TokenKind::kWord) {
          const std::string& word = token.word.value;
          commandStart = functionName || (mayBeReserved && isReserved(word));
          functionName = mayBeReserved && word == "function";
        } else {
          commandStart = true;
        }
        if (insideSubstitution_) {
          // A case pattern's ")" would end the substitution here but not in the shell.
          if (mayBeReserved && token.word.value == "case")
            noteUncertain(token.begin, "a case statement inside a command substitution");
          if (token.op == "(") ++parentheses;
          if (token.op == ")" && parentheses-- == 0) return;
        }
        script_.tokens.push_back(std::move(token));
      }
    }
  }

  void noteUncertain(std::size_t from, const std::string& reason) {
    if (from < script_.uncertainFrom) {
      script_.uncertainFrom = from;
      script_.uncertainBecause = reason;
    }
  }

  // From the "(" of a $( to just past its ")", read with the same rules as the script
  // itself, so that quotes, comments and here-documents inside it cannot put the two out
  // of step.
  std::size_t skipSubstitution(std::size_t start) {
    Lexer inner(text_);
    inner.nesting_ = nesting_;
    inner.insideSubstitution_ = true;
    inner.parentheses_ = parentheses_;
    inner.pos_ = start + 2;
    inner.lex();
    if (!inner.pending_.empty())
      inner.noteUncertain(start, "a here-document that begins inside a command substitution");
    if (inner.script_.uncertainFrom != std::string::npos)
      noteUncertain(start, inner.script_.uncertainBecause);
    return inner.pos_;
  }

  char at(std::size_t i) const { return i < text_.size() ? text_[i] : '\0'; }
  std::size_t lineEnd(std::size_t from) const {
    const std::size_t end = text_.find('\n', from);
    return end == std::string_view::npos ? text_.size() : end;
  }

  Token readNewline() {
    Token token{TokenKind::kNewline, pos_, pos_ + 1, "\n", {}};
    ++pos_;
    readHereDocuments();
    script_.lineStarts.push_back(pos_);
    return token;
  }

  Token readToken() {
    const std::size_t begin = pos_;
    std::size_t digits = pos_;
    while (isDigit(at(digits))) ++digits;
    const char c = at(digits);
    if (c == '<' || c == '>' || (digits == pos_ && c == '&' && at(pos_ + 1) == '>')) {
      pos_ = digits;
      return readRedirection(begin);
    }
    if (text_[pos_] == '(' && at(pos_ + 1) == '(') {
      // bash runs an arithmetic command where the inner ( closes just before a ), sh two
      // subshells: the one takes "<<" as a shift, the other as a here-document.
      // Over lines, where a comment may stand, the two readings cannot even be told apart.
      const std::size_t inner = closingOnLine(pos_ + 1);
      const bool arithmetic = inner != std::string_view::npos && at(inner + 1) == ')';
      if (arithmetic || (inner == std::string_view::npos && lineEnd(pos_) < text_.size())) {
        noteUncertain(begin, "a (( command, which bash reads as arithmetic and sh as subshells");
      }
      if (arithmetic) {
        pos_ = inner + 2;
        Token token{TokenKind::kWord, begin, pos_, "", {}};
        token.word.begin = begin;
        token.word.end = pos_;
        token.word.value = text_.substr(begin, pos_ - begin);
        noteUnknown(token.word, "an arithmetic command");
        return token;
      }
    }
    // ";&" and ";;&" end a case item in bash (sh rejects them).
    for (const char* op : {"&&", "||", ";;&", ";;", ";&", ";", "&", "|", "(", ")"}) {
      if (text_.substr(pos_, std::strlen(op)) == op) {
        pos_ += std::strlen(op);
        return Token{TokenKind::kOperator, begin, pos_, op, {}};
      }
    }
    Token token{TokenKind::kWord, begin, 0, "", readWord()};
    token.end = pos_;
    return token;
  }

  Token readRedirection(std::size_t begin) {
    for (const char* op :
         {"<<<", "<<-", "<<", "<>", "<&", "<", ">>", ">&", ">|", ">", "&>>", "&>"}) {
      if (text_.substr(pos_, std::strlen(op)) == op) {
        pos_ += std::strlen(op);
        break;
      }
    }
    Token token{
        TokenKind::kRedirection, begin, 0, std::string(text_.substr(begin, pos_ - begin)), {}};
    // The target may stand after blanks and line continuations.
    while (isBlank(at(pos_)) || (at(pos_) == '\\' && at(pos_ + 1) == '\n'))
      pos_ += at(pos_) == '\\' ? 2 : 1;
    token.word = readWord();
    token.end = pos_;
    const std::string op = token.op.substr(token.op.find_first_not_of("0123456789"));
    if (op == "<<" || op == "<<-") {
      pending_.push_back({token.word.value, op == "<<-", !token.word.quoted});
    }
    return token;
  }

  Word readWord() {
    Word word;
    word.begin = pos_;
    bool brace = false;
    while (pos_ < text_.size() && !endsWord(text_[pos_])) {
      const char c = text_[pos_];
      // A line continuation the word would end at once without: the word ends before it.
      if (c == '\\' && at(pos_ + 1) == '\n' &&
          (pos_ + 2 == text_.size() || endsWord(text_[pos_ + 2]))) {
        break;
      }
      if (c == '\\') {
        readEscape(word);
      } else if (c == '\'') {
        readSingleQuoted(word);
      } else if (c == '"') {
        readDoubleQuoted(word);
      } else if (c == '$' && at(pos_ + 1) == '\'') {
        readAnsiQuoted(word);
      } else if (c == '$' || c == '`') {
        readExpansion(word);
      } else {
        if (c != '\0' && std::strchr("*?[", c) != nullptr) {
          noteUnknown(word, "an unquoted glob character");
          word.mayBeSeveral = true;
        }
        if (c == '~') noteUnknown(word, "an unquoted ~");
        brace = brace || c == '{' || c == '}';
        if (c != '\0') word.value += c;  // the shells drop NUL bytes
        ++pos_;
      }
    }
    word.end = pos_;
    // A lone brace is the group keyword; inside a word bash may expand it.
    if (brace && word.end - word.begin > 1) {
      noteUnknown(word, "an unquoted brace");
      word.mayBeSeveral = true;
    }
    return word;
  }

  void readEscape(Word& word) {
    const char next = at(pos_ + 1);
    if (next == '\n') {
      noteUnknown(word, kContinuation);
    } else if (pos_ + 1 == text_.size()) {
      // bash drops it, dash keeps it.
      noteUnknown(word, "a backslash at the end of the file");
    } else if (next != '\0') {  // the shells drop NUL bytes, and nothing follows the end
      word.value += next;
    }
    word.quoted = true;
    pos_ = std::min(pos_ + 2, text_.size());
  }

  void readSingleQuoted(Word& word) {
    word.quoted = true;
    const std::size_t close = text_.find('\'', pos_ + 1);
    const std::size_t end = close == std::string_view::npos ? text_.size() : close;
    if (close == std::string_view::npos) noteUnknown(word, "an unterminated quote");
    word.value += text_.substr(pos_ + 1, end - pos_ - 1);
    pos_ = std::min(end + 1, text_.size());
  }

  // bash's $'...', where a backslash escapes the quote; sh reads a $ and a plain quote. Read
  // bash's way, since its scripts are the ones that write it.
  void readAnsiQuoted(Word& word) {
    word.quoted = true;
    noteUnknown(word, "a $'...' quote");
    const std::size_t close = ansiQuoteEnd(pos_);
    word.value += text_.substr(pos_ + 2, close - pos_ - 2);
    pos_ = std::min(close + 1, text_.size());
  }

  // The closing quote of the $'...' at dollar as bash reads it, or the end of the text. Where
  // sh would end it elsewhere, the two shells split the rest of the script differently.
  std::size_t ansiQuoteEnd(std::size_t dollar) {
    std::size_t i = dollar + 2;
    while (i < text_.size() && text_[i] != '\'') i += text_[i] == '\\' ? 2 : 1;
    i = std::min(i, text_.size());
    if (std::min(text_.find('\'', dollar + 2), text_.size()) != i)
      noteUncertain(dollar, "a $'...' quote, which sh and bash read differently");
    return i;
  }

  void readDoubleQuoted(Word& word) {
    word.quoted = true;
    ++pos_;
    while (pos_ < text_.size() && text_[pos_] != '"') {
      const char c = text_[pos_];
      if (c == '\\' && at(pos_ + 1) != '\0' && std::strchr("$`\"\\\n", at(pos_ + 1)) != nullptr) {
        readEscape(word);
      } else if (c == '$' || c == '`') {
        inDoubleQuotes_ = true;
        readExpansion(word);
        inDoubleQuotes_ = false;
      } else {
        word.value += c;
        ++pos_;
      }
    }
    if (pos_ >= text_.size()) noteUnknown(word, "an unterminated quote");
    pos_ = std::min(pos_ + 1, text_.size());
  }

  void readExpansion(Word& word) {
    const std::size_t begin = pos_;
    pos_ = skipExpansion(begin, &word.substitutions);
    noteUnknown(word, text_[begin] == '`' ? kBackquote : kExpansion);
    std::string name = parameterName(text_.substr(begin, pos_ - begin));
    word.onlyParameters = word.onlyParameters && !name.empty();
    word.parameters.push_back({word.value.size(), std::move(name), inDoubleQuotes_});
    word.mayBeSeveral = word.mayBeSeveral || !inDoubleQuotes_;
  }

  // From a "$" or a backquote to just past the expansion; a command substitution's inside
  // is recorded when substitutions is given.
  std::size_t skipExpansion(std::size_t start, std::vector<Span>* substitutions) {
    if (nesting_ == kMaxNesting) throw NestingTooDeep();
    ++nesting_;
    const std::size_t end = skipExpansionOnce(start, substitutions);
    --nesting_;
    return end;
  }

  std::size_t skipExpansionOnce(std::size_t start, std::vector<Span>* substitutions) {
    if (text_[start] == '`') {
      std::size_t i = start + 1;
      while (i < text_.size() && text_[i] != '`') i += text_[i] == '\\' ? 2 : 1;
      // Where a backquote inside a comment or here-document ends them, the shells differ.
      const std::string_view inside = text_.substr(start + 1, i - start - 1);
      bool comment = false;
      for (std::size_t j = 0; j < inside.size(); ++j)
        comment = comment || (inside[j] == '#' && (j == 0 || endsWord(inside[j - 1])));
      if (comment || inside.find("<<") != std::string_view::npos)
        noteUncertain(start, "a comment or here-document inside backquotes");
      if (substitutions != nullptr)
        substitutions->push_back({start + 1, std::min(i, text_.size())});
      return std::min(i + 1, text_.size());
    }
    const char next = at(start + 1);
    if (next == '(' && at(start + 2) == '(') {
      // Arithmetic where the inner ( closes just before a ); otherwise bash reads a command
      // substitution that begins with a subshell. Told by the line's parentheses alone: a
      // scan over the expansions nested inside would be done again at every level.
      const std::size_t inner = closingOnLine(start + 2);
      if (inner == std::string_view::npos || at(inner + 1) == ')') {
        return skipBracketed(start + 1, '(', ')');
      }
    }
    if (next == '(') {
      const std::size_t end = skipSubstitution(start);
      if (substitutions != nullptr) substitutions->push_back({start + 2, end});
      return end;
    }
    if (next == '{') return skipBracketed(start + 1, '{', '}');
    std::size_t i = start + 1;
    if (next != '\0' && std::strchr("@*#?-$!0123456789", next) != nullptr) return i + 1;
    while (isalnum(static_cast<unsigned char>(at(i))) || at(i) == '_') ++i;
    return i;
  }

  // From an opening bracket to just past its match, over quotes and nested expansions.
  // Where the "(" at from closes on its own line, counting parentheses alone; npos when it
  // does not. Each line's pairs are found once for all the lexers of a text, so that a line of
  // many "((" stays linear.
  std::size_t closingOnLine(std::size_t from) {
    LineParentheses& line = *parentheses_;
    if (from < line.begin || from >= line.end) {
      line.begin = from == 0 ? 0 : text_.rfind('\n', from - 1) + 1;  // npos + 1 is 0
      line.end = lineEnd(from);
      line.closing.assign(line.end - line.begin, std::string_view::npos);
      std::vector<std::size_t> open;
      for (std::size_t i = line.begin; i < line.end; ++i) {
        if (text_[i] == '(') open.push_back(i);
        if (text_[i] == ')' && !open.empty()) {
          line.closing[open.back() - line.begin] = i;
          open.pop_back();
        }
      }
    }
    return line.closing[from - line.begin];
  }

  std::size_t skipBracketed(std::size_t open, char opening, char closing) {
    int depth = 0;
    std::size_t i = open;
    while (i < text_.size()) {
      const char c = text_[i];
      if (c == opening) {
        ++depth;
      } else if (c == closing && --depth == 0) {
        return i + 1;
      } else if (c == '\\') {
        ++i;
      } else if (c == '$' && at(i + 1) == '\'' && !inDoubleQuotes_) {
        i = ansiQuoteEnd(i);
      } else if (c == '\'' && opening == '{' && inDoubleQuotes_) {
        // dash takes it as itself, bash as the start of a quote.
        noteUncertain(open - 1, "a single quote inside ${...} within double quotes");
      } else if (c == '\'') {
        i = std::min(text_.find('\'', i + 1), text_.size());
      } else if (c == '"') {
        for (++i; i < text_.size() && text_[i] != '"'; ++i) {
          if (text_[i] == '\\') ++i;
        }
      } else if (c == '`' || (c == '$' && (at(i + 1) == '(' || at(i + 1) == '{'))) {
        i = skipExpansion(i, nullptr);
        continue;
      }
      ++i;
    }
    return text_.size();
  }

  void readHereDocuments() {
    for (const HereDocument& document : pending_) {
      const std::size_t body = pos_;
      std::size_t bodyEnd = text_.size();  // where the delimiter line begins
      while (pos_ < text_.size()) {
        const std::size_t end = lineEnd(pos_);
        std::string_view line = text_.substr(pos_, end - pos_);
        while (document.stripTabs && !line.empty() && line.front() == '\t') line.remove_prefix(1);
        if (line == document.delimiter) bodyEnd = pos_;
        pos_ = std::min(end + 1, text_.size());
        if (bodyEnd != text_.size()) break;
      }
      if (document.expands) recordSubstitutions(body, bodyEnd);
    }
    pending_.clear();
  }

  // The command substitutions of an expanding here-document's body, which end within it.
  void recordSubstitutions(std::size_t begin, std::size_t end) {
    Lexer body(text_.substr(0, end));
    body.nesting_ = nesting_;
    for (std::size_t i = begin; i < end; ++i) {
      if (text_[i] == '\\') {
        ++i;
      } else if (text_[i] == '`' || text_[i] == '$') {
        i = body.skipExpansion(i, &script_.hereDocumentSubstitutions) - 1;
      }
    }
    if (body.script_.uncertainFrom != std::string::npos)
      noteUncertain(body.script_.uncertainFrom, body.script_.uncertainBecause);
  }

  std::string_view text_;
  std::size_t pos_ = 0;
  LexedScript script_;
  std::vector<HereDocument> pending_;
  bool insideSubstitution_ = false;
  int nesting_ = 0;              // expansions open around pos_
  bool inDoubleQuotes_ = false;  // the expansion being read is inside double quotes
  std::shared_ptr<LineParentheses> parentheses_ = std::make_shared<LineParentheses>();
};

}  // namespace

NestingTooDeep::NestingTooDeep()
    : std::runtime_error("expansions nested more than " + std::to_string(kMaxNesting) + " deep") {}

LexedScript lexShell(std::string_view text) { return Lexer(text).run(); }

}  // namespace translate
