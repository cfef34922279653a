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
#include <sstream>
#include <string>
#include <vector>

#include "../tests/support.h"
#include "entry/translation.h"
#include "tovak/test.h"

namespace {

void check(bool holds, const char* property) {
  if (!holds) {
    std::fprintf(stderr, "property broken: %s\n", property);
    std::abort();
  }
}

using Tokens = std::vector<std::string>;  // the command word and the option tokens

struct Run {
  std::optional<std::string> line;  // nullopt: refused
  std::string flushed, all;
  bool operator==(const Run& o) const { return line == o.line && all == o.all; }
};

Run translate(const Tokens& tokens) {
  Tokens strings{"fuzz"};
  strings.insert(strings.end(), tokens.begin(), tokens.end());
  ArgumentVector vector(strings);
  OutputCapture capture;
  const tovak::Translation translation = tovak::translateArguments(vector.argc(), vector.argv());
  Run run{translation.accepted ? std::optional(translation.commandLine) : std::nullopt,
          capture.flushed(), capture.all()};
  check(std::strcmp(vector.argv()[0], "fuzz") == 0, "argv[0] is left alone");
  for (std::size_t i = 1; i < strings.size(); ++i) {
    check(vector.argv()[i] == std::string(std::strlen(strings[i].c_str()), ' '),
          "the caller's strings are all blanks afterwards, lengths kept (up to a NUL)");
  }
  static const std::string kOutput = " --output /var/log/Zantor_Support/";
  check(run.line ? run.line->size() >= kOutput.size() &&
                       run.line->compare(run.line->size() - kOutput.size(), kOutput.size(),
                                         kOutput) == 0
                 : !run.all.empty(),
        "an accepted line ends with the output option; a refused one prints why");
  return run;
}

// Reaches the table through a pointer to the base's member, named from a derived class.
struct TableOf : CommandBase {
  static SupportedParameterTable& of(CommandBase& translator) {
    return translator.*(&TableOf::supportedParameters);
  }
};

SupportedParameterTable tableFor(const std::string& word) {
  ArgumentVector none({"fuzz"});
  Parameters parameters(none.argc(), none.argv());
  const auto translator = tovak::createTranslator(word, &parameters);
  if (translator == nullptr) return {};
  translator->addSupportedParameters();
  return TableOf::of(*translator);
}

// The first short option of the table that stands on the line, rewritten to its long form.
std::optional<Tokens> withLongForm(Tokens tokens, const SupportedParameterTable& table) {
  for (std::size_t i = 1; i < tokens.size(); ++i) {
    for (const auto& [first, second] : table) {
      if (tokens[i] != first || second.empty() || first.rfind("--", 0) == 0) continue;
      const bool valued = i + 1 < tokens.size() && tokens[i + 1].rfind('-', 0) != 0;
      tokens[i] = second + (valued ? "=" + tokens[i + 1] : "");
      if (valued) tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(i) + 1);
      return tokens;
    }
  }
  return std::nullopt;
}

// The self-test echoes each element on a line of its own: reading them back gives the vector.
void checkSelfTestEchoesTheVector(const Tokens& tokens) {
  Tokens strings{"fuzz"};
  strings.insert(strings.end(), tokens.begin(), tokens.end());
  ArgumentVector vector(strings);
  OutputCapture capture;
  Test test(vector.argc(), vector.argv());
  test.printCommandAndParamaters();
  test.testParameters();
  std::istringstream lines(capture.all());
  std::string line;
  std::getline(lines, line);
  check(line == "argc: " + std::to_string(strings.size()), "self-test counts the vector");
  for (std::size_t i = 0; i < strings.size(); ++i) {
    std::getline(lines, line);
    check(line == "argv[" + std::to_string(i) + "]:" + vector.argv()[i],
          "self-test echoes each element");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  Tokens tokens(1);
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == '\n') {
      tokens.emplace_back();
    } else {
      tokens.back().push_back(static_cast<char>(data[i]));
    }
  }
  const Run run = translate(tokens);
  static const std::map<std::string, std::string> kOtherWord = {
      {"co", "compare"}, {"compare", "co"}, {"up", "update"},     {"update", "up"},
      {"ac", "acquire"}, {"acquire", "ac"}, {"qk", "quenmark"}, {"quenmark", "qk"}};
  const auto other = kOtherWord.find(tokens[0]);
  if (other != kOtherWord.end()) {
    Tokens renamed = tokens;
    renamed[0] = other->second;
    check(translate(renamed) == run, "the short and the long command word do the same");
  }
  const SupportedParameterTable table = tableFor(tokens[0]);
  if (run.line) {
    if (const std::optional<Tokens> longForm = withLongForm(tokens, table)) {
      const Run rewritten = translate(*longForm);
      check(!rewritten.line || rewritten.line == run.line,
            "an option in its long form translates as in its short form");
    }
    Tokens extended = tokens;
    extended.push_back("--x" + tokens.back());
    const std::string seen = extended.back().c_str();  // what the library sees: up to a NUL
    const std::string name = seen.substr(0, seen.find('='));
    const auto known = [&](const auto& row) { return row.first == name || row.second == name; };
    if (std::none_of(table.begin(), table.end(), known)) {
      const Run refused = translate(extended);
      check(!refused.line && refused.flushed.empty() &&
                refused.all == "The parameter: " + name + " is not supported!",
            "an unknown long option is refused by name, unflushed");
    }
  }
  checkSelfTestEchoesTheVector(tokens);
  return 0;
}
