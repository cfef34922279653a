// Feeds arbitrary argument vectors through everything dll_main does short of running the
// tool, checking properties that a wrong translation breaks.
// Input: the argument tokens separated by '\n', the first one being the command word.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "entry/translation.h"
#include "library_call.h"

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
  if (holds) return;
  std::fprintf(stderr, "property broken: %s\n", property);
  std::abort();
}

// What a call printed: flushed during it, and all of it; and the line a translation
// accepted (nullopt: refused, or no translation).
struct Printed {
  std::string flushed, all;
  std::optional<std::string> line;
  bool operator==(const Printed& o) const { return line == o.line && all == o.all; }
};

// The vector "fuzz <tokens...>" translated as a launcher hands it over, and what it printed.
Printed translated(const Tokens& tokens) {
  Tokens strings{"fuzz"};
  strings.insert(strings.end(), tokens.begin(), tokens.end());
  std::vector<char*> argv;
  for (std::string& text : strings) argv.push_back(text.data());
  translate::CapturedOutput printed;
  const int argc = static_cast<int>(argv.size());
  const tovak::Translation translation = tovak::translateArguments(argc, argv.data());
  Printed run{printed.written(), "", std::nullopt};
  run.all = printed.finish();
  if (translation.accepted) run.line = translation.commandLine;
  return run;
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
  return 0;
}
