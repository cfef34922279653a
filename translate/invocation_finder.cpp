#include "invocation_finder.h"

#include <algorithm>
#include <cctype>
#include <set>

#include "script_rewriter.h"
#include "wrapper_grammar.h"

namespace translate {
namespace {

bool isOneOf(const Word& word, std::initializer_list<std::string_view> names) {
  return !word.quoted && std::find(names.begin(), names.end(), word.value) != names.end();
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

bool namesLauncher(std::string_view value) {
  return value == "tovak" || (value.size() >= 6 && value.substr(value.size() - 6) == "/tovak");
}

// The variable a program word expands whole: $T, ${T}, "$T" or "${T}"; empty otherwise.
std::string variableOf(const Word& word) {
  const bool whole = word.value.empty() && word.onlyParameters && word.parameters.size() == 1;
  return whole ? word.parameters[0].name : "";
}

std::vector<Word>::const_iterator from(const std::vector<Word>& words, std::size_t i) {
  return words.begin() + static_cast<std::ptrdiff_t>(std::min(i, words.size()));
}

bool writesStandardOutput(const Token& token) {
  const std::string op = token.op.substr(token.op.find_first_not_of("0123456789"));
  const std::string fd = token.op.substr(0, token.op.size() - op.size());
  if (op == "&>" || op == "&>>") return true;
  return (op == ">" || op == ">>" || op == ">|") && (fd.empty() || fd == "1");
}

enum class Expect { kCommand, kArguments, kCaseSubject, kCaseIn, kPattern, kFunctionName };

class Finder {
 public:
  Finder(std::vector<Invocation>& found, std::set<std::string>& launcherVariables,
         const std::string& fendix)
      : found_(found), launcherVariables_(launcherVariables), fendix_(fendix) {}

  bool definesLauncher() const { return definesLauncher_; }

  void find(std::string_view text, const LexedScript& script, std::size_t base, bool inside) {
    const std::vector<Token>& tokens = script.tokens;
    Expect expect = Expect::kCommand;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
      findInside(text, tokens[i].word.substitutions, base);
      if (tokens[i].kind == TokenKind::kWord) {
        expect = afterWord(text, tokens, i, expect, base, inside);
      } else if (tokens[i].kind == TokenKind::kOperator) {
        // ";;" (in bash ";&" and ";;&" too) stands only in a case statement, where a pattern
        // follows it.
        if (expect != Expect::kPattern || tokens[i].op == ")") {
          const std::string& op = tokens[i].op;
          expect = op == ";;" || op == ";&" || op == ";;&" ? Expect::kPattern : Expect::kCommand;
        }
      } else if (tokens[i].kind == TokenKind::kNewline && expect != Expect::kPattern &&
                 expect != Expect::kCaseIn) {
        expect = Expect::kCommand;
      }
    }
    findInside(text, script.hereDocumentSubstitutions, base);
  }

 private:
  // What the word at tokens[i] is, given what was expected there; a simple command's words
  // are read whole and i moves to its last token.
  Expect afterWord(std::string_view text, const std::vector<Token>& tokens, std::size_t& i,
                   Expect expect, std::size_t base, bool inside) {
    const Word& word = tokens[i].word;
    switch (expect) {
      case Expect::kPattern:
        return isOneOf(word, {"esac"}) ? Expect::kArguments : Expect::kPattern;
      case Expect::kCaseSubject:
        return Expect::kCaseIn;
      case Expect::kCaseIn:
        return isOneOf(word, {"in"}) ? Expect::kPattern : Expect::kArguments;
      case Expect::kFunctionName:
        definesLauncher_ = definesLauncher_ || word.value == "tovak";
        [[fallthrough]];
      case Expect::kArguments:
        return Expect::kArguments;
      case Expect::kCommand:
        break;
    }
    if (isOneOf(word, {"!", "if", "then", "else", "elif", "do", "while", "until", "{"}) ||
        isAssignment(text, word)) {
      return Expect::kCommand;
    }
    if (isOneOf(word, {"case"})) return Expect::kCaseSubject;
    if (isOneOf(word, {"function"})) return Expect::kFunctionName;
    // NAME ( ): the "(" and ")" that follow leave the body in command position.
    if (i + 2 < tokens.size() && tokens[i + 1].op == "(" && tokens[i + 2].op == ")") {
      definesLauncher_ = definesLauncher_ || word.value == "tovak";
      return Expect::kCommand;
    }
    std::size_t last = i;
    while (last + 1 < tokens.size() && (tokens[last + 1].kind == TokenKind::kWord ||
                                        tokens[last + 1].kind == TokenKind::kRedirection)) {
      ++last;
    }
    readCommand(text, tokens, i, last, base, inside);
    for (++i; i <= last; ++i) findInside(text, tokens[i].word.substitutions, base);
    i = last;
    return Expect::kArguments;
  }

  void findInside(std::string_view text, const std::vector<Span>& spans, std::size_t base) {
    for (const Span& span : spans) {
      const std::string_view inner = text.substr(span.begin, span.end - span.begin);
      find(inner, lexShell(inner), base + span.begin, true);
    }
  }

  bool refersToLauncher(const Word& word) const {
    return namesLauncher(word.value) || launcherVariables_.count(variableOf(word)) > 0;
  }

  // The simple command of tokens[first..last], its wrappers followed to the command they run.
  void readCommand(std::string_view text, const std::vector<Token>& tokens, std::size_t first,
                   std::size_t last, std::size_t base, bool inside) {
    std::vector<Word> words;
    std::vector<std::size_t> tokenOf;
    for (std::size_t k = first; k <= last; ++k) {
      if (tokens[k].kind != TokenKind::kWord) continue;
      words.push_back(tokens[k].word);
      tokenOf.push_back(k);
    }
    std::size_t w = 0;
    WrapperRead wrapper{WrapperRead::kCommand, 0, ""};
    while (isWrapper(words[w]) && words[w].unknownBecause.empty()) {
      wrapper = readWrapper(words, w);
      if (wrapper.kind != WrapperRead::kCommand) break;
      w = wrapper.next;
    }
    Invocation invocation;
    if (wrapper.kind == WrapperRead::kNothing) return;
    if (wrapper.kind == WrapperRead::kNotFollowed) {
      const auto named = std::find_if(from(words, w + 1), words.cend(), [&](const Word& word) {
        return refersToLauncher(word) || mentionsLauncher(word.value);
      });
      if (named == words.cend()) return;
      invocation.program = *named;
      invocation.words.push_back({base + named->begin, base + named->end});
      invocation.unknownBecause = wrapper.reason;
    } else if (namesLauncher(words[w].value)) {
      invocation = readInvocation(text, tokens, tokenOf[w], last, base);
    } else if (const std::string& value = words[w].value;
               value == "Fendix" || (!fendix_.empty() && value == fendix_) ||
               (value.size() > 7 && value.compare(value.size() - 7, 7, "/Fendix") == 0)) {
      invocation = readInvocation(text, tokens, tokenOf[w], last, base);
      invocation.isFendix = true;
    } else if (const std::string name = variableOf(words[w]); launcherVariables_.count(name) > 0) {
      invocation.program = words[w];
      invocation.unknownBecause = "runs tovak through $" + std::string(name) +
                                  ", whose value is known only when the script runs";
    } else if (!words[w].unknownBecause.empty() &&
               std::any_of(from(words, w + 1), words.cend(),
                           [&](const Word& word) { return refersToLauncher(word); })) {
      // $SUDO tovak ...: what runs is known only when the script runs.
      invocation.program = words[w];
      invocation.unknownBecause = "the program before tovak is " + words[w].unknownBecause;
    } else if (const LaterRun later = runsLater(words, w);
               std::any_of(from(words, later.from), words.cend(),
                           [](const Word& word) { return mentionsLauncher(word.value); })) {
      invocation.program = words[w];
      invocation.unknownBecause = later.reason;
    } else {
      return;
    }
    invocation.begin = base + invocation.program.begin;
    invocation.end = base + tokens[last].end;
    if (invocation.words.empty())
      invocation.words.push_back({invocation.begin, base + invocation.program.end});
    invocation.piped = last + 1 < tokens.size() && tokens[last + 1].op == "|";
    invocation.pipelineEnd = base + pipelineEnd(text, tokens, last + 1);
    if (inside) {
      invocation.unknownBecause = "inside a command substitution";
      invocation.valuesVary = false;
    }
    found_.push_back(std::move(invocation));
  }

  static Invocation readInvocation(std::string_view text, const std::vector<Token>& tokens,
                                   std::size_t program, std::size_t last, std::size_t base) {
    Invocation invocation;
    invocation.program = tokens[program].word;
    invocation.unknownBecause = invocation.program.unknownBecause;
    invocation.words.push_back({base + tokens[program].begin, base + tokens[program].end});
    bool onlyParameters = invocation.unknownBecause.empty();
    for (std::size_t i = program + 1; i <= last; ++i) {
      const Token& token = tokens[i];
      std::string reason = token.word.unknownBecause;
      if (token.kind == TokenKind::kWord) {
        invocation.arguments.push_back(token.word);
        invocation.words.push_back({base + token.begin, base + token.end});
        onlyParameters = onlyParameters && token.word.onlyParameters;
      } else {
        // A redirection is carried over as written: what it expands to is the same for both.
        reason.clear();
        invocation.redirections.push_back({base + token.begin, base + token.end});
        if (writesStandardOutput(token) && token.word.value != "/dev/null" &&
            token.word.end > token.word.begin) {
          invocation.outputs.emplace_back(
              text.substr(token.word.begin, token.word.end - token.word.begin));
        }
      }
      if (invocation.unknownBecause.empty()) invocation.unknownBecause = reason;
    }
    invocation.valuesVary = onlyParameters && !invocation.unknownBecause.empty();
    return invocation;
  }

  // The offset where the pipeline that goes on at tokens[next] ends.
  static std::size_t pipelineEnd(std::string_view text, const std::vector<Token>& tokens,
                                 std::size_t next) {
    int depth = 0;
    bool afterPipe = false;  // line ends (and the comment lines they bring) go on after a "|"
    for (std::size_t i = next; i < tokens.size(); ++i) {
      const std::string& op = tokens[i].op;
      if (op == "(") ++depth;
      if (op == ")" && depth-- == 0) return tokens[i].begin;
      if (depth == 0 && (op == ";" || op == ";;" || op == "&" || op == "&&" || op == "||" ||
                         (tokens[i].kind == TokenKind::kNewline && !afterPipe))) {
        return tokens[i].begin;
      }
      afterPipe = op == "|" || (afterPipe && tokens[i].kind == TokenKind::kNewline);
    }
    return text.size();
  }

  std::vector<Invocation>& found_;
  const std::set<std::string>& launcherVariables_;
  const std::string& fendix_;
  bool definesLauncher_ = false;
};

// The variables the script assigns a value naming the launcher anywhere: T=/usr/bin/tovak,
// export T="sudo tovak".
std::set<std::string> launcherVariables(std::string_view text, const LexedScript& script) {
  std::set<std::string> names;
  for (const Token& token : script.tokens) {
    if (token.kind != TokenKind::kWord || !isAssignment(text, token.word)) continue;
    const std::string& value = token.word.value;
    const std::size_t equals = value.find('=');
    if (equals != std::string::npos &&
        mentionsLauncher(std::string_view(value).substr(equals + 1))) {
      names.insert(value.substr(0, equals));
    }
  }
  return names;
}

}  // namespace

std::vector<Invocation> findInvocations(std::string_view text, const LexedScript& script,
                                        const std::string& fendix,
                                        const std::set<std::string>& preset) {
  std::vector<Invocation> found;
  std::set<std::string> variables = launcherVariables(text, script);
  variables.insert(preset.begin(), preset.end());
  Finder finder(found, variables, fendix);
  finder.find(text, script, 0, false);
  if (finder.definesLauncher()) {
    for (Invocation& invocation : found) {
      if (invocation.program.value == "tovak" && invocation.unknownBecause.empty()) {
        invocation.unknownBecause = "the script defines a function named tovak, which this runs";
        invocation.valuesVary = false;
      }
    }
  }
  std::sort(found.begin(), found.end(),
            [](const Invocation& a, const Invocation& b) { return a.begin < b.begin; });
  return found;
}

}  // namespace translate
