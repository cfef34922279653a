// The programs that run another command given as their own words (sudo, env, nice, timeout,
// ...), read with each program's own option grammar, so that the command they run can be
// found behind any options and nesting; and the programs that run a command later from a
// text or a list of words (sh -c, ssh, xargs, ...), which no rewrite may reach into.
#ifndef TOVAK_TRANSLATE_WRAPPER_GRAMMAR_H
#define TOVAK_TRANSLATE_WRAPPER_GRAMMAR_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "shell_lexer.h"

namespace translate {

struct WrapperRead {
  enum Kind {
    kCommand,      // the wrapped command's program word is words[next]
    kNothing,      // this form runs no command (command -v, sudo -l, ...), or none follows
    kNotFollowed,  // an option changes what runs, or is not known: reason says which
  };
  Kind kind = kNothing;
  std::size_t next = 0;
  std::string reason;
};

// The program a word names, for telling wrappers and runners apart: its last path component
// ("/usr/bin/sudo" is sudo).
std::string_view programName(const Word& word);

// Whether the word names a wrapper the grammar knows; shell builtins only by their bare name.
bool isWrapper(const Word& program);

// Reads the wrapper at words[at] and its own words.
WrapperRead readWrapper(const std::vector<Word>& words, std::size_t at);

// A program that runs a command later from its words or from a text (sh -c, ssh, xargs,
// find -exec, ...): from which of its words that command may come, and what to say of it.
struct LaterRun {
  std::size_t from = std::string::npos;  // npos: the program runs nothing later
  std::string reason;
};
LaterRun runsLater(const std::vector<Word>& words, std::size_t program);

// A program that only prints, tests or looks for its words and never runs them (echo, printf,
// logger, grep, test, [, ...): "echo tovak co -F" is a mention.
bool onlyReadsItsWords(const Word& program);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_WRAPPER_GRAMMAR_H
