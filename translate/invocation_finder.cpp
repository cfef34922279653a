#include "invocation_finder.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <utility>

#include "entry/translation.h"
#include "reason_text.h"
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

bool isCommandWord(std::string_view value) {
  return std::any_of(
      tovak::kCommandWords.begin(), tovak::kCommandWords.end(),
      [&](const auto& word) { return value == word.name || value == word.abbreviation; });
}

// A text that holds a legacy line: the launcher's name and a command word, between blanks.
bool holdsLegacyLine(std::string_view text) {
  std::string_view previous;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t begin = text.find_first_not_of(" \t\n", at);
    if (begin == std::string_view::npos) break;
    const std::size_t end = std::min(text.find_first_of(" \t\n", begin), text.size());
    const std::string_view current = text.substr(begin, end - begin);
    if (namesLauncher(previous) && isCommandWord(current)) return true;
    previous = current;
    at = end;
  }
  return false;
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

// ";;", and bash's ";&" and ";;&": a case pattern follows.
bool endsCaseItem(std::string_view op) { return op == ";;" || op == ";&" || op == ";;&"; }

// Compound commands, by the word or operator that opens one and the one that closes it.
constexpr std::pair<std::string_view, std::string_view> kCompounds[] = {
    {"(", ")"},      {"{", "}"},        {"if", "fi"},      {"case", "esac"},
    {"for", "done"}, {"while", "done"}, {"until", "done"}, {"select", "done"}};

// The text of tokens[i] when it may open or close a compound command: an operator, or an
// unquoted word where a command begins; empty otherwise.
std::string_view compoundText(const std::vector<Token>& tokens, std::size_t i) {
  if (tokens[i].kind == TokenKind::kOperator) return tokens[i].op;
  if (tokens[i].kind != TokenKind::kWord || tokens[i].word.quoted) return {};
  const bool commandStarts =
      i == 0 || tokens[i - 1].kind == TokenKind::kOperator ||
      tokens[i - 1].kind == TokenKind::kNewline ||
      isOneOf(tokens[i - 1].word, {"then", "do", "else", "elif", "{", "!", "if", "while", "until"});
  return commandStarts ? std::string_view(tokens[i].word.value) : std::string_view();
}

std::string_view closerOf(std::string_view opener) {
  for (const auto& [open, close] : kCompounds) {
    if (open == opener) return close;
  }
  return {};
}

bool isCloser(std::string_view text) {
  return !text.empty() &&
         std::any_of(std::begin(kCompounds), std::end(kCompounds),
                     [&](const auto& compound) { return compound.second == text; });
}

// The offset where the pipeline that goes on at tokens[next] ends: at a separator outside the
// compound commands opened in it (line ends too, but not right after a "|"), or where a
// compound command around it closes.
std::size_t pipelineEnd(std::string_view text, const std::vector<Token>& tokens, std::size_t next) {
  std::vector<std::string_view> awaited;  // the closers of the compound commands opened
  bool afterPipe = false;
  for (std::size_t i = next; i < tokens.size(); ++i) {
    const std::string_view compound = compoundText(tokens, i);
    if (!closerOf(compound).empty()) {
      awaited.push_back(closerOf(compound));
    } else if (isCloser(compound)) {
      if (awaited.empty()) return tokens[i].begin;
      if (awaited.back() == compound) awaited.pop_back();  // else a case pattern's ")"
    }
    const std::string& op = tokens[i].op;
    if (awaited.empty() && (op == ";" || endsCaseItem(op) || op == "&" || op == "&&" ||
                            op == "||" || (tokens[i].kind == TokenKind::kNewline && !afterPipe))) {
      return tokens[i].begin;
    }
    afterPipe = op == "|" || (afterPipe && tokens[i].kind == TokenKind::kNewline);
  }
  return text.size();
}

// Where a redirection sends standard output, as written; empty for another descriptor, for
// input and for /dev/null.
std::string targetOf(std::string_view text, const Token& redirection) {
  if (redirection.kind != TokenKind::kRedirection || !writesStandardOutput(redirection) ||
      redirection.word.value == "/dev/null" || redirection.word.end == redirection.word.begin) {
    return "";
  }
  return std::string(
      text.substr(redirection.word.begin, redirection.word.end - redirection.word.begin));
}

// A compound command whose output goes elsewhere: piped (pipelineEnd not 0), to files, or,
// for bash's process substitutions <(...) and >(...), to the command around it.
struct CompoundOutput {
  Span compound;                     // from its opening word to its closing one
  std::size_t pipelineEnd = 0;       // the end of the pipeline it feeds, or 0
  std::vector<std::string> targets;  // where its redirections send standard output
  bool substituted = false;          // a process substitution
};

bool opensProcessSubstitution(const std::vector<Token>& tokens, std::size_t i) {
  return tokens[i].op == "(" && i > 0 && tokens[i - 1].kind == TokenKind::kRedirection &&
         tokens[i - 1].word.end == tokens[i - 1].word.begin && tokens[i - 1].end == tokens[i].begin;
}

// The compound commands whose output is piped or redirected: every call inside one sends its
// output there too.
std::vector<CompoundOutput> compoundOutputs(std::string_view text,
                                            const std::vector<Token>& tokens) {
  std::vector<std::pair<std::string_view, std::size_t>> open;  // closer awaited, opening offset
  std::vector<std::size_t> substitutions;  // of open: the process substitutions among them
  std::vector<CompoundOutput> outputs;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const std::string_view compound = compoundText(tokens, i);
    if (!closerOf(compound).empty()) {
      if (opensProcessSubstitution(tokens, i)) substitutions.push_back(open.size());
      open.emplace_back(closerOf(compound), tokens[i].begin);
      continue;
    }
    if (open.empty() || open.back().first != compound) continue;
    CompoundOutput output{{open.back().second, tokens[i].end}, 0, {}, false};
    open.pop_back();
    if (!substitutions.empty() && substitutions.back() == open.size()) {
      substitutions.pop_back();
      output.substituted = true;
      outputs.push_back(std::move(output));
      continue;
    }
    std::size_t after = i + 1;
    for (; after < tokens.size() && tokens[after].kind == TokenKind::kRedirection; ++after) {
      if (std::string target = targetOf(text, tokens[after]); !target.empty()) {
        output.targets.push_back(std::move(target));
      }
    }
    if (after < tokens.size() && tokens[after].op == "|") {
      output.pipelineEnd = pipelineEnd(text, tokens, after);  // from the "|", over a line end
    }
    if (output.pipelineEnd != 0 || !output.targets.empty()) outputs.push_back(std::move(output));
  }
  return outputs;
}

// Whether the body of the here-document that redirection opens, the first after offset from,
// mentions tovak.
bool hereDocumentMentions(std::string_view text, std::size_t from, const Token& redirection) {
  const bool tabsStripped = redirection.op.find("<<-") != std::string::npos;
  for (std::size_t line = text.find('\n', from); line != std::string_view::npos;) {
    const std::size_t end = std::min(text.find('\n', line + 1), text.size());
    std::string_view body = text.substr(line + 1, end - line - 1);
    if (tabsStripped) body.remove_prefix(std::min(body.find_first_not_of('\t'), body.size()));
    if (body == redirection.word.value) return false;
    if (mentionsLauncher(body)) return true;
    line = end < text.size() ? end : std::string_view::npos;
  }
  return false;
}

// Whether the command of tokens[first..last] is given a text naming tovak on its standard
// input: from a here-document or here-string of its own, or from the pipeline before it
// (echo 'tovak co -F' | sh, cat <<E | sh).
bool readsLauncherText(std::string_view text, const std::vector<Token>& tokens, std::size_t first,
                       std::size_t last) {
  std::size_t start = first;
  while (start > 0 && tokens[start - 1].kind != TokenKind::kNewline &&
         (tokens[start - 1].kind != TokenKind::kOperator || tokens[start - 1].op == "|")) {
    --start;
  }
  if (start < first && mentionsLauncher(text.substr(tokens[start].begin,
                                                    tokens[first].begin - tokens[start].begin))) {
    return true;
  }
  for (std::size_t k = start; k <= last; ++k) {
    const std::string& op = tokens[k].op;
    if (tokens[k].kind != TokenKind::kRedirection || op.find("<<") == std::string::npos) continue;
    if (op.find("<<<") != std::string::npos
            ? mentionsLauncher(tokens[k].word.value)
            : hereDocumentMentions(text, tokens[last].end, tokens[k])) {
      return true;
    }
  }
  return false;
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
    const std::vector<CompoundOutput> outer =
        std::exchange(compoundOutputs_, compoundOutputs(text, tokens));
    Expect expect = Expect::kCommand;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
      findInside(text, tokens[i].word.substitutions, base);
      if (tokens[i].kind == TokenKind::kWord) {
        expect = afterWord(text, tokens, i, expect, base, inside);
      } else if (tokens[i].kind == TokenKind::kOperator) {
        // A case item's end stands only in a case statement, where a pattern follows it.
        if (expect != Expect::kPattern || tokens[i].op == ")") {
          expect = endsCaseItem(tokens[i].op) ? Expect::kPattern : Expect::kCommand;
        }
      } else if (tokens[i].kind == TokenKind::kNewline && expect != Expect::kPattern &&
                 expect != Expect::kCaseIn) {
        expect = Expect::kCommand;
      }
    }
    findInside(text, script.hereDocumentSubstitutions, base);
    compoundOutputs_ = outer;
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
      case Expect::kFunctionName:  // function NAME { ...: the body is in command position
        definesLauncher_ = definesLauncher_ || word.value == "tovak";
        return Expect::kCommand;
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
      definesLauncher_ = definesLauncher_ || (isOneOf(word, {"alias"}) &&
                                              tokens[last].word.value.rfind("tovak=", 0) == 0);
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

  // A word another program may run tovak from: its text names tovak, or it expands a variable
  // the script sets to a value naming tovak.
  bool mayRunLauncher(const Word& word) const {
    return mentionsLauncher(word.value) ||
           std::any_of(word.parameters.begin(), word.parameters.end(),
                       [&](const Parameter& p) { return launcherVariables_.count(p.name) > 0; });
  }

  // Words of a program the tool does not know that hold a legacy line: "run tovak co -F",
  // "retry 3 "$T" co", "tmux new 'tovak co -F'".
  bool holdLegacyLine(const std::vector<Word>& words, std::size_t from) const {
    for (std::size_t k = from; k < words.size(); ++k) {
      const bool followed = k + 1 < words.size() && isCommandWord(words[k + 1].value);
      if ((refersToLauncher(words[k]) && followed) || holdsLegacyLine(words[k].value)) return true;
    }
    return false;
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
    if (words.size() == 1 && isOneOf(words[0], {"exec"})) {  // exec >>log: all that follows
      for (std::size_t k = first; k <= last; ++k) {
        if (std::string target = targetOf(text, tokens[k]); !target.empty()) {
          execOutputs_.push_back(std::move(target));
        }
      }
      return;
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
      invocation =
          readInvocation(text, tokens, leadOf(text, tokens, first), tokenOf[w], last, base);
    } else if (const std::string& value = words[w].value;
               value == "Fendix" || (!fendix_.empty() && value == fendix_) ||
               (value.size() > 7 && value.compare(value.size() - 7, 7, "/Fendix") == 0)) {
      invocation =
          readInvocation(text, tokens, leadOf(text, tokens, first), tokenOf[w], last, base);
      invocation.isFendix = true;
    } else if (const std::string name = variableOf(words[w]); launcherVariables_.count(name) > 0) {
      invocation.program = words[w];
      invocation.unknownBecause = "runs tovak through $" + std::string(name) +
                                  ", whose value is known only when the script runs";
    } else if (onlyReadsItsWords(words[w])) {
      return;
    } else if (!words[w].unknownBecause.empty() &&
               std::any_of(from(words, w + 1), words.cend(),
                           [&](const Word& word) { return refersToLauncher(word); })) {
      // $SUDO tovak ...: what runs is known only when the script runs.
      invocation.program = words[w];
      invocation.unknownBecause = "the program before tovak is " + words[w].unknownBecause;
    } else if (const LaterRun later = runsLater(words, w);
               std::any_of(from(words, later.from), words.cend(),
                           [&](const Word& word) { return mayRunLauncher(word); })) {
      invocation.program = words[w];
      invocation.unknownBecause = later.reason;
    } else if (later.from != std::string::npos && readsLauncherText(text, tokens, first, last)) {
      invocation.program = words[w];
      invocation.unknownBecause = "tovak is run later by " + oneLine(programName(words[w])) +
                                  ", from its standard input, which the tool does not rewrite";
    } else if (later.from == std::string::npos && words[w].value.find('=') == std::string::npos &&
               holdLegacyLine(words, w + 1)) {
      // (A word such as 1a=3 is a mistyped assignment, not a program anyone installs.)
      invocation.program = words[w];
      invocation.unknownBecause = "tovak is among the words of " + oneLine(words[w].value) +
                                  ", a program the tool does not know, which may run it";
    } else {
      return;
    }
    invocation.begin = base + invocation.program.begin;
    invocation.end = base + tokens[last].end;
    if (invocation.words.empty())
      invocation.words.push_back({invocation.begin, base + invocation.program.end});
    invocation.piped = last + 1 < tokens.size() && tokens[last + 1].op == "|";
    invocation.pipelineEnd = base + pipelineEnd(text, tokens, last + 1);
    bool substituted = inside;
    for (const CompoundOutput& around : compoundOutputs_) {
      const Span& compound = around.compound;
      if (compound.begin > tokens[first].begin || tokens[first].begin >= compound.end) continue;
      substituted = substituted || around.substituted;
      invocation.outputs.insert(invocation.outputs.end(), around.targets.begin(),
                                around.targets.end());
      if (around.pipelineEnd == 0) continue;
      invocation.piped = true;
      invocation.pipelineEnd = std::max(invocation.pipelineEnd, base + around.pipelineEnd);
    }
    invocation.outputs.insert(invocation.outputs.end(), execOutputs_.begin(), execOutputs_.end());
    if (substituted) {
      invocation.unknownBecause =
          inside ? "inside a command substitution" : "inside a process substitution";
      invocation.valuesVary = false;
    }
    found_.push_back(std::move(invocation));
  }

  // The call whose program word is tokens[program], in the simple command of
  // tokens[first..last]; redirections before the program word stay where they are written.
  static Invocation readInvocation(std::string_view text, const std::vector<Token>& tokens,
                                   std::size_t first, std::size_t program, std::size_t last,
                                   std::size_t base) {
    Invocation invocation;
    for (std::size_t i = first; i < program; ++i) addOutput(text, tokens[i], invocation);
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
        addOutput(text, token, invocation);
      }
      if (invocation.unknownBecause.empty()) invocation.unknownBecause = reason;
    }
    invocation.valuesVary = onlyParameters && !invocation.unknownBecause.empty();
    return invocation;
  }

  // The first token of the simple command whose first word is tokens[first]: redirections and
  // assignments may stand before it.
  static std::size_t leadOf(std::string_view text, const std::vector<Token>& tokens,
                            std::size_t first) {
    while (first > 0 && (tokens[first - 1].kind == TokenKind::kRedirection ||
                         (tokens[first - 1].kind == TokenKind::kWord &&
                          isAssignment(text, tokens[first - 1].word)))) {
      --first;
    }
    return first;
  }

  static void addOutput(std::string_view text, const Token& token, Invocation& invocation) {
    if (std::string target = targetOf(text, token); !target.empty()) {
      invocation.outputs.push_back(std::move(target));
    }
  }

  std::vector<Invocation>& found_;
  const std::set<std::string>& launcherVariables_;
  const std::string& fendix_;
  bool definesLauncher_ = false;
  std::vector<CompoundOutput> compoundOutputs_;  // of the text find() reads now
  std::vector<std::string> execOutputs_;  // where exec sent the script's standard output so far
};

// Whether a for list, from tokens[i] on, names the launcher.
bool listNamesLauncher(std::string_view text, const std::vector<Token>& tokens, std::size_t i) {
  for (; i < tokens.size() && tokens[i].kind == TokenKind::kWord; ++i) {
    const Word& word = tokens[i].word;
    if (mentionsLauncher(text.substr(word.begin, word.end - word.begin))) return true;
  }
  return false;
}

// The variables the script assigns a value naming the launcher anywhere, as written, so
// within expansions too: T=/usr/bin/tovak, export T="sudo tovak", T=${T:-tovak},
// T=$(command -v tovak); and the variable of a for loop over a list naming it.
std::set<std::string> launcherVariables(std::string_view text, const LexedScript& script) {
  std::set<std::string> names;
  const std::vector<Token>& tokens = script.tokens;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const Word& word = tokens[i].word;
    if (tokens[i].kind != TokenKind::kWord) continue;
    const std::string_view written = text.substr(word.begin, word.end - word.begin);
    const std::size_t equals = written.find('=');
    if (isAssignment(text, word) && mentionsLauncher(written.substr(equals + 1))) {
      names.emplace(written.substr(0, equals));
    }
    if (isOneOf(word, {"for"}) && i + 2 < tokens.size() && tokens[i + 1].kind == TokenKind::kWord &&
        !tokens[i + 1].word.value.empty() && isOneOf(tokens[i + 2].word, {"in"}) &&
        listNamesLauncher(text, tokens, i + 3)) {
      names.insert(tokens[i + 1].word.value);  // never "", which every other word would match
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
      if (invocation.program.value == "tovak" &&
          (invocation.unknownBecause.empty() || invocation.valuesVary)) {
        invocation.unknownBecause =
            "the script defines a function or alias named tovak, which this runs";
        invocation.valuesVary = false;
      }
    }
  }
  std::sort(found.begin(), found.end(),
            [](const Invocation& a, const Invocation& b) { return a.begin < b.begin; });
  return found;
}

}  // namespace translate
