// Feeds arbitrary argument vectors through everything dll_main does short of running the
// tool, and through the self-test, checking properties that a wrong translation breaks.
// Input: the argument tokens separated by '\n', the first one being the command word.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "entry/translation.h"
#include "library_call.h"
#include "tovak/test.h"

namespace {

using Tokens = std::vector<std::string>;  // the command word and the option tokens

Tokens tokensOf(const uint8_t* data, std::size_t size) {
  Tokens tokens(1);
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == '\n')
      tokens.emplace_back();
    else
      tokens.back().push_back(static_cast<char>(data[i]));
  }
  return tokens;
}

void check(bool holds, const char* property) {
  if (!holds) {
    std::fprintf(stderr, "property broken: %s\n", property);
    std::abort();
  }
}

// What a call printed: flushed during it, and all of it; and the line a translation
// accepted (nullopt: refused, or no translation).
struct Printed {
  std::string flushed, all;
  std::optional<std::string> line;
  bool operator==(const Printed& o) const { return line == o.line && all == o.all; }
};

// Calls body with the writable vector "fuzz <tokens...>", as a launcher hands it over.
template <typename Body>
Printed printedBy(const Tokens& tokens, Body body) {
  Tokens strings{"fuzz"};
  strings.insert(strings.end(), tokens.begin(), tokens.end());
  std::vector<char*> argv;
  for (std::string& text : strings) argv.push_back(text.data());
  translate::CapturedOutput output;
  Printed printed{"", "", body(static_cast<int>(argv.size()), argv.data())};
  printed.flushed = output.written();
  printed.all = output.finish();
  return printed;
}

Printed translated(const Tokens& tokens) {
  const Printed run = printedBy(tokens, [&](int argc, char** argv) {
    const tovak::Translation translation = tovak::translateArguments(argc, argv);
    for (int i = 0; i < argc; ++i) {
      const std::size_t length = i == 0 ? 4 : std::strlen(tokens[i - 1].c_str());
      check(argv[i] == (i == 0 ? "fuzz" : std::string(length, ' ')),
            "the caller's strings become blanks of the same lengths, argv[0] stays");
    }
    return translation.accepted ? std::optional(translation.commandLine) : std::nullopt;
  });
  const std::string output = " --output /var/log/Zantor_Support/";
  check(run.line ? run.line->size() >= output.size() &&
                       run.line->substr(run.line->size() - output.size()) == output
                 : !run.all.empty(),
        "an accepted line ends with the output option; a refused one says why");
  return run;
}

// The line with a short option of the table that stands on it once, in either form,
// rewritten to its long form.
std::optional<Tokens> withLongForm(Tokens tokens, const SupportedParameterTable& table) {
  for (const auto& row : table) {
    const std::string &first = row.first, &second = row.second;
    if (second.empty() || first.rfind("--", 0) == 0) continue;
    const auto named = [&](const std::string& token) {
      const std::string seen = token.c_str();  // what the library sees: up to a NUL
      return seen == first || seen == second || seen.rfind(second + "=", 0) == 0;
    };
    const auto at = std::find(tokens.begin() + 1, tokens.end(), first);
    if (at == tokens.end() || std::count_if(tokens.begin() + 1, tokens.end(), named) != 1) continue;
    const bool valued = at + 1 != tokens.end() && (at + 1)->rfind('-', 0) != 0;
    *at = second + (valued ? "=" + *(at + 1) : "");
    if (valued) tokens.erase(at + 1);
    return tokens;
  }
  return std::nullopt;
}

}  // namespace

// Fully buffered whatever fd 1 is, so that only an explicit flush reaches the capture.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
  return std::setvbuf(stdout, nullptr, _IOFBF, 1 << 16);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  Tokens tokens = tokensOf(data, size);
  const Printed run = translated(tokens);
  const std::string word = tokens[0].c_str();  // what the library sees: up to a NUL
  static const std::map<std::string, std::string> kOtherWord = {
      {"co", "compare"}, {"compare", "co"}, {"up", "update"},   {"update", "up"},
      {"ac", "acquire"}, {"acquire", "ac"}, {"qk", "quenmark"}, {"quenmark", "qk"}};
  if (const auto other = kOtherWord.find(word); other != kOtherWord.end()) {
    Tokens renamed = tokens;
    renamed[0] = other->second;
    check(translated(renamed) == run, "both command words do the same");
  }
  const SupportedParameterTable table = tovak::optionTableOf(word);
  if (run.line) {
    if (const std::optional<Tokens> longForm = withLongForm(tokens, table)) {
      const std::optional<std::string> rewritten = translated(*longForm).line;
      check(!rewritten || rewritten == run.line, "an option's long form translates as its short");
    }
    Tokens extended = tokens;
    extended.push_back("--x" + tokens.back());
    const std::string seen = extended.back().c_str();
    const std::string name = seen.substr(0, seen.find('='));
    const auto known = [&](const auto& row) { return row.first == name || row.second == name; };
    if (std::none_of(table.begin(), table.end(), known)) {
      const Printed refused = translated(extended);
      check(!refused.line && refused.flushed.empty() &&
                refused.all == "The parameter: " + name + " is not supported!",
            "an unknown long option is refused by its name, unflushed");
    }
  }
  // The self-test's echo reads back as the vector: its count, then each element on a line.
  std::string echo = "argc: " + std::to_string(tokens.size() + 1) + "\nargv[0]:fuzz\n";
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    echo += "argv[" + std::to_string(i + 1) + "]:" + tokens[i].c_str() + "\n";
  }
  const std::string printed = printedBy(tokens, [](int argc, char** argv) {
                                Test(argc, argv).printCommandAndParamaters();
                                return std::optional<std::string>();
                              }).all;
  check(printed.compare(0, echo.size(), echo) == 0, "the self-test echoes the vector");
  return 0;
}
