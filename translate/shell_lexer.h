// Reads a shell script the way dash and bash split it into words, operators and
// redirections, keeping every token's byte offsets so that a rewrite can replace exactly
// the text of one command and leave the rest of the script as it is. Only what finding a
// command needs is understood: quoting, comments, here-documents, substitutions.
#ifndef TOVAK_TRANSLATE_SHELL_LEXER_H
#define TOVAK_TRANSLATE_SHELL_LEXER_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace translate {

// The inside of a `...`, or of a $(...) with its closing ")", as offsets into the text that
// was read.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;
};

// A parameter expansion in a word ($NAME, ${NAME}, $1): where its value stands in the word's
// value, and its name.
struct Parameter {
  std::size_t at = 0;
  std::string name;
  bool quoted = false;  // inside double quotes
};

struct Word {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::string value;           // after quote removal
  bool quoted = false;         // some part of it was quoted or escaped
  std::string unknownBecause;  // why value is not what the shell will make of it; empty if it is
  bool mayBeSeveral = false;  // an unquoted expansion or glob: it may become several words, or none
  std::vector<Parameter> parameters;
  bool onlyParameters = true;  // nothing but parameter expansions makes value unknown
  std::vector<Span> substitutions;
};

enum class TokenKind { kWord, kOperator, kRedirection, kNewline };

struct Token {
  TokenKind kind = TokenKind::kWord;
  std::size_t begin = 0;
  std::size_t end = 0;
  std::string op;  // the operator, or the redirection's operator with its fd
  Word word;       // the word, or the redirection's target
};

struct LexedScript {
  std::vector<Token> tokens;
  std::vector<std::size_t> lineStarts;  // where a new command can begin on a fresh line
  std::vector<Span> hereDocumentSubstitutions;
  // Where a command substitution begins whose end cannot be told for certain: from there on
  // the tokens may be out of step with the shell's. npos when there is none.
  std::size_t uncertainFrom = std::string::npos;
  std::string uncertainBecause;
};

// Thrown for expansions nested so deep that reading them could exhaust the stack.
class NestingTooDeep : public std::runtime_error {
 public:
  NestingTooDeep();
};

// Splits text into tokens. Here-document bodies and comments yield none.
LexedScript lexShell(std::string_view text);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_SHELL_LEXER_H
