#include "invocation_finder.h"

#include <algorithm>
#include <cctype>

namespace translate {
namespace {

bool isOneOf(const Word& word, std::initializer_list<std::string_view> names) {
  return !word.quoted && std::find(names.begin(), names.end(), word.value) != names.end();
}

// Keywords and "!" leave the next word in command position.
bool isKeyword(const Word& word) {
  return isOneOf(word, {"!", "if", "then", "else", "elif", "do", "while", "until", "{"});
}

// Wrappers that run their first argument as a command when given no options of their own;
// unlike keywords they are commands, so quoting them changes nothing.
bool isWrapper(const Word& word) {
  for (const char* name : {"sudo", "env", "exec", "command", "nice", "nohup", "time"}) {
    if (word.value == name) return true;
  }
  return false;
}

bool isAssignment(std::string_view text, const Word& word) {
  std::size_t i = word.begin;
  const auto nameCharacter = [&](bool first) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    return c == '_' || std::isalpha(c) || (!first && std::isdigit(c));
  };
  if (i >= word.end || !nameCharacter(true)) return false;
  while (i < word.end && nameCharacter(false)) ++i;
  return i < word.end && text[i] == '=';
}

bool namesLauncher(const Word& word) {
  const std::string& value = word.value;
  return value == "tovak" ||
         (value.size() >= 6 && value.compare(value.size() - 6, 6, "/tovak") == 0);
}

bool isHereDocument(const Token& token) {
  return token.op.find("<<") != std::string::npos && token.op.find("<<<") == std::string::npos;
}

class Finder {
 public:
  explicit Finder(std::vector<Invocation>& found) : found_(found) {}

  void find(std::string_view text, const LexedScript& script, std::size_t base, bool inside) {
    bool commandPosition = true;
    const std::vector<Token>& tokens = script.tokens;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
      const Token& token = tokens[i];
      findInside(text, token.word.substitutions, base);
      if (token.kind == TokenKind::kNewline || token.kind == TokenKind::kOperator) {
        commandPosition = true;
      } else if (token.kind == TokenKind::kWord && commandPosition && !isKeyword(token.word) &&
                 !isWrapper(token.word) && !isAssignment(text, token.word)) {
        commandPosition = false;
        if (namesLauncher(token.word))
          found_.push_back(readInvocation(text, tokens, i, base, inside));
      }
    }
    findInside(text, script.hereDocumentSubstitutions, base);
  }

 private:
  void findInside(std::string_view text, const std::vector<Span>& spans, std::size_t base) {
    for (const Span& span : spans) {
      const std::string_view inner = text.substr(span.begin, span.end - span.begin);
      find(inner, lexShell(inner), base + span.begin, true);
    }
  }

  static Invocation readInvocation(std::string_view text, const std::vector<Token>& tokens,
                                   std::size_t first, std::size_t base, bool inside) {
    Invocation invocation;
    invocation.program = tokens[first].word;
    invocation.begin = base + tokens[first].begin;
    invocation.unknownBecause = invocation.program.unknownBecause;
    std::size_t i = first + 1;
    std::size_t end = tokens[first].end;
    for (; i < tokens.size() &&
           (tokens[i].kind == TokenKind::kWord || tokens[i].kind == TokenKind::kRedirection);
         ++i) {
      const Token& token = tokens[i];
      if (token.kind == TokenKind::kWord) {
        invocation.arguments.push_back(token.word);
      } else {
        invocation.redirections.emplace_back(text.substr(token.begin, token.end - token.begin));
      }
      std::string reason = token.word.unknownBecause;
      if (isHereDocument(token)) reason = "a here-document on the invocation";
      if (token.continued) reason = "a line continuation";
      if (invocation.unknownBecause.empty()) invocation.unknownBecause = reason;
      end = token.end;
    }
    invocation.end = base + end;
    invocation.piped = i < tokens.size() && tokens[i].op == "|";
    if (inside) invocation.unknownBecause = "inside a command substitution";
    return invocation;
  }

  std::vector<Invocation>& found_;
};

}  // namespace

std::vector<Invocation> findInvocations(std::string_view text, const LexedScript& script) {
  std::vector<Invocation> found;
  Finder(found).find(text, script, 0, false);
  std::sort(found.begin(), found.end(),
            [](const Invocation& a, const Invocation& b) { return a.begin < b.begin; });
  return found;
}

}  // namespace translate
