#include "wrapper_grammar.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <optional>

namespace translate {
namespace {

using Names = std::initializer_list<std::string_view>;

// One wrapper's command line: options as getopt reads them (clustered short options, a value
// attached or in the next word, long options with "=" or the next word, "--" ending them,
// the first other word ending them too), then its operands, then the command.
struct Grammar {
  std::string_view name;
  bool builtin;              // exec and command: the shell's own, never a path
  std::string_view flags;    // short options without a value
  std::string_view valued;   // short options with a value
  std::string_view nothing;  // short options after which no command runs
  Names longFlags;
  Names longValued;
  Names longNothing;
  int operands;      // words before the command: timeout's duration, chrt's priority, ...
  bool assignments;  // NAME=value words before the command, as env and sudo take them
};

// Options left out of a grammar are not followed: sudo -i, -s, -R and -b change what runs or
// where, env -S splits a text into a command, exec -a renames it, timeout --foreground
// changes which processes its signal reaches.
// One wrapper a row.
// clang-format off
const Grammar kGrammars[] = {
    {"sudo", false, "AEHknPSB", "ugCDprtTU", "lvKeV",
     {"--askpass", "--preserve-env", "--set-home", "--non-interactive", "--preserve-groups",
      "--stdin", "--bell", "--reset-timestamp"},
     {"--user", "--group", "--close-from", "--chdir", "--prompt", "--role", "--type",
      "--command-timeout", "--other-user"},
     {"--list", "--validate", "--remove-timestamp", "--edit"}, 0, true},
    {"env", false, "i0v", "uC", "", {"--ignore-environment", "--null", "--debug"},
     {"--unset", "--chdir"}, {}, 0, true},
    {"nice", false, "", "n", "", {}, {"--adjustment"}, {}, 0, false},
    {"nohup", false, "", "", "", {}, {}, {}, 0, false},
    {"timeout", false, "v", "ks", "", {"--preserve-status", "--verbose"},
     {"--kill-after", "--signal"}, {}, 1, false},
    {"ionice", false, "t", "cn", "pPu", {"--ignore"}, {"--class", "--classdata"},
     {"--pid", "--pgid", "--uid"}, 0, false},
    {"chrt", false, "bdfioRrva", "TPD", "pm",
     {"--batch", "--deadline", "--fifo", "--idle", "--other", "--rr", "--reset-on-fork",
      "--verbose", "--all-tasks"},
     {"--sched-runtime", "--sched-period", "--sched-deadline"}, {"--pid", "--max"}, 1, false},
    {"taskset", false, "ca", "", "p", {"--cpu-list", "--all-tasks"}, {}, {"--pid"}, 1, false},
    {"flock", false, "sxenuoF", "wE", "",
     {"--shared", "--exclusive", "--unlock", "--nonblock", "--nb", "--close", "--no-fork",
      "--verbose"},
     {"--timeout", "--wait", "--conflict-exit-code"}, {}, 1, false},
    {"setsid", false, "cfw", "", "", {"--ctty", "--fork", "--wait"}, {}, {}, 0, false},
    {"stdbuf", false, "", "ioe", "", {}, {"--input", "--output", "--error"}, {}, 0, false},
    {"time", false, "apqv", "fo", "", {"--append", "--portability", "--quiet", "--verbose"},
     {"--format", "--output"}, {}, 0, false},
    {"exec", true, "", "", "", {}, {}, {}, 0, false},
    {"command", true, "p", "", "vV", {}, {}, {}, 0, false},
};
// clang-format on

// Programs that run a command later from their words or from a text.
constexpr std::string_view kRunners[] = {
    "sh",     "dash",    "bash",   "ksh",     "zsh",         "su",       "runuser", "eval",
    "trap",   "watch",   "ssh",    "xargs",   "find",        "parallel", "at",      "batch",
    "script", "nsenter", "chroot", "unshare", "systemd-run", "doas",     "pkexec"};

// Programs that only print, test or look for their words.
constexpr std::string_view kTextReaders[] = {
    "echo",  "printf", "logger", "grep", "egrep",   "fgrep", "test",  "[",  "[[",
    ":",     "type",   "which",  "hash", "whereis", "pgrep", "pkill", "ls", "killall",
    "pidof", "man"};

template <typename Range>
bool contains(const Range& names, std::string_view name) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool contains(Names names, std::string_view name) { return contains<Names>(names, name); }

const Grammar* grammarOf(const Word& program) {
  const std::string_view name = programName(program);
  for (const Grammar& grammar : kGrammars) {
    if (grammar.name == name && (!grammar.builtin || program.value == name)) return &grammar;
  }
  return nullptr;
}

bool isAssignment(std::string_view word) {
  const std::size_t equals = word.find('=');
  if (equals == 0 || equals == std::string_view::npos) return false;
  if (std::isdigit(static_cast<unsigned char>(word[0]))) return false;
  return std::all_of(word.begin(), word.begin() + static_cast<std::ptrdiff_t>(equals), [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
  });
}

std::string laterReason(std::string_view runner) {
  return "tovak is run later by " + std::string(runner) +
         ", from its words or a text, which the tool does not rewrite";
}

bool isPlainSignal(std::string_view signal) {
  return contains({"TERM", "SIGTERM", "15", "KILL", "SIGKILL", "9"}, signal);
}

class WrapperReader {
 public:
  WrapperReader(const std::vector<Word>& words, std::size_t at, const Grammar& grammar)
      : words_(words), at_(at), grammar_(grammar) {}

  WrapperRead read() {
    std::size_t i = at_ + 1;
    for (; i < words_.size() && !result_.has_value(); ++i) {
      const std::string_view word = words_[i].value;
      if (grammar_.assignments && isAssignment(word)) break;
      // Where options may stand, a value known only at run time may be one.
      if (!words_[i].unknownBecause.empty()) {
        return notFollowed("an expansion among the options of " + std::string(grammar_.name));
      }
      if (word == "--") {
        ++i;
        break;
      }
      if (word == "-" && grammar_.name == "env") continue;  // the old spelling of -i
      if (word.size() < 2 || word[0] != '-') break;
      if (word[1] == '-') {
        readLong(word, i);
      } else if (grammar_.name == "nice" && isNumber(word.substr(1))) {
        continue;  // nice's old form, -10
      } else {
        readShort(word, i);
      }
    }
    if (result_) return *result_;
    return readOperands(i);
  }

 private:
  static bool isNumber(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
      return std::isdigit(static_cast<unsigned char>(c));
    });
  }

  WrapperRead expansionAmongWords() {
    return notFollowed("an unquoted expansion among the words of " + std::string(grammar_.name));
  }

  WrapperRead notFollowed(const std::string& reason) {
    return WrapperRead{WrapperRead::kNotFollowed, 0, reason};
  }

  void notFollowedOption(std::string_view option) {
    result_ = notFollowed(std::string(grammar_.name) + " " + std::string(option) +
                          ": an option that may change what runs, which the tool does not follow");
  }

  void runsNothing() { result_ = WrapperRead{WrapperRead::kNothing, 0, ""}; }

  // The value of an option, from the rest of its word or the next word.
  void takeValue(std::string_view option, std::string_view attached, std::size_t& i) {
    std::string_view value = attached;
    if (value.empty()) {
      if (++i >= words_.size()) return runsNothing();
      if (words_[i].mayBeSeveral) return notFollowedOption(option);
      value = words_[i].value;
    }
    if ((option == "-s" || option == "--signal") && !isPlainSignal(value)) {
      notFollowedOption(std::string(option) + " " + std::string(value));
    }
  }

  void readLong(std::string_view word, std::size_t& i) {
    const std::size_t equals = word.find('=');
    const std::string_view name = word.substr(0, equals);
    if (name == "--help" || name == "--version" || contains(grammar_.longNothing, name)) {
      return runsNothing();
    }
    if (contains(grammar_.longValued, name)) {
      if (equals != std::string_view::npos && equals + 1 == word.size()) return;  // empty value
      return takeValue(name, equals == std::string_view::npos ? "" : word.substr(equals + 1), i);
    }
    if (equals == std::string_view::npos && contains(grammar_.longFlags, name)) return;
    notFollowedOption(name);
  }

  void readShort(std::string_view word, std::size_t& i) {
    for (std::size_t k = 1; k < word.size(); ++k) {
      const char letter = word[k];
      const std::string option{'-', letter};
      if (grammar_.nothing.find(letter) != std::string_view::npos) return runsNothing();
      if (grammar_.valued.find(letter) != std::string_view::npos) {
        return takeValue(option, word.substr(k + 1), i);
      }
      if (grammar_.flags.find(letter) == std::string_view::npos) return notFollowedOption(option);
    }
  }

  WrapperRead readOperands(std::size_t i) {
    for (; grammar_.assignments && i < words_.size() && isAssignment(words_[i].value); ++i) {
      if (words_[i].mayBeSeveral) return expansionAmongWords();
    }
    for (int operand = 0; operand < grammar_.operands; ++operand, ++i) {
      if (i >= words_.size()) return WrapperRead{};
      if (words_[i].mayBeSeveral) return expansionAmongWords();
    }
    if (grammar_.name == "flock" && i < words_.size() &&
        (words_[i].value == "-c" || words_[i].value == "--command")) {
      return notFollowed(laterReason("flock -c"));
    }
    if (i >= words_.size()) return WrapperRead{};
    return WrapperRead{WrapperRead::kCommand, i, ""};
  }

  const std::vector<Word>& words_;
  std::size_t at_;
  const Grammar& grammar_;
  std::optional<WrapperRead> result_;
};

}  // namespace

bool isWrapper(const Word& program) { return grammarOf(program) != nullptr; }

WrapperRead readWrapper(const std::vector<Word>& words, std::size_t at) {
  return WrapperReader(words, at, *grammarOf(words[at])).read();
}

LaterRun runsLater(const std::vector<Word>& words, std::size_t program) {
  const std::string_view name = programName(words[program]);
  std::size_t from = program + 1;
  if (name == "find") {
    while (from < words.size() &&
           !contains({"-exec", "-execdir", "-ok", "-okdir"}, words[from - 1].value)) {
      ++from;
    }
  } else if (!contains(kRunners, name)) {
    return {};
  }
  return {from, laterReason(name)};
}

std::string_view programName(const Word& word) {
  const std::string_view value = word.value;
  return value.substr(value.rfind('/') + 1);
}

bool onlyReadsItsWords(const Word& program) {
  return contains(kTextReaders, programName(program));
}

}  // namespace translate
