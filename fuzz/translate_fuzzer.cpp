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

#include "../tests/support.h"
#include "entry/translation.h"
#include "tovak/test.h"

namespace {

using Tokens = std::vector<std::string>;  // the command word and the option tokens

void check(bool holds, const char* property) {
  if (!holds) {
    std::fprintf(stderr, "property broken: %s\n", property);
    std::abort();
  }
}

struct Translated {
  std::optional<std::string> line;  // nullopt: refused
  std::string flushed, all;         // what was printed, as for OutputCapture
  bool operator==(const Translated& o) const { return line == o.line && all == o.all; }
};

// "fuzz <tokens...>" through everything dll_main does but the launch, with the properties
// every translation has.
Translated translate(const Tokens& tokens) {
  Tokens arguments{"fuzz"};
  arguments.insert(arguments.end(), tokens.begin(), tokens.end());
  ArgumentVector vector(arguments);
  OutputCapture capture;
  const tovak::Translation translation = tovak::translateArguments(vector.argc(), vector.argv());
  const Translated run{translation.accepted ? std::optional(translation.commandLine) : std::nullopt,
                       capture.flushed(), capture.all()};
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::size_t length = std::strlen(arguments[i].c_str());  // what the library sees
    check(vector.argv()[i] == (i == 0 ? arguments[0] : std::string(length, ' ')),
          "the caller's strings become blanks of the same lengths, argv[0] stays");
  }
  const std::string output = " --output /var/log/Zantor_Support/";
  check(run.line ? run.line->size() >= output.size() &&
                       run.line->substr(run.line->size() - output.size()) == output
                 : !run.all.empty(),
        "an accepted line ends with the output option; a refused one says why");
  return run;
}

// Reaches a translator's table through a pointer to the base's member, named from a
// derived class.
struct TableOf : CommandBase {
  static SupportedParameterTable of(const std::string& word) {
    ArgumentVector none({"fuzz"});
    Parameters parameters(none.argc(), none.argv());
    const auto translator = tovak::createTranslator(word, &parameters);
    if (translator == nullptr) return {};
    translator->addSupportedParameters();
    return (*translator).*(&TableOf::supportedParameters);
  }
};

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

// The self-test echoes each element on a line of its own: reading them back gives the vector.
void checkSelfTestEchoesTheVector(Tokens tokens) {
  tokens.insert(tokens.begin(), "fuzz");
  ArgumentVector vector(tokens);
  OutputCapture capture;
  Test(vector.argc(), vector.argv()).printCommandAndParamaters();
  std::istringstream lines(capture.all());
  std::string line;
  std::getline(lines, line);
  check(line == "argc: " + std::to_string(tokens.size()), "self-test counts the vector");
  for (std::size_t i = 0; i < tokens.size() && std::getline(lines, line); ++i) {
    check(line == "argv[" + std::to_string(i) + "]:" + vector.argv()[i], "self-test echoes");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  Tokens tokens(1);
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == '\n') tokens.emplace_back();
    else tokens.back().push_back(static_cast<char>(data[i]));
  }
  const Translated run = translate(tokens);
  const std::string word = tokens[0].c_str();  // what the library sees: up to a NUL
  static const std::map<std::string, std::string> kOtherWord = {
      {"co", "compare"}, {"compare", "co"}, {"up", "update"},     {"update", "up"},
      {"ac", "acquire"}, {"acquire", "ac"}, {"qk", "quenmark"}, {"quenmark", "qk"}};
  if (const auto other = kOtherWord.find(word); other != kOtherWord.end()) {
    Tokens renamed = tokens;
    renamed[0] = other->second;
    check(translate(renamed) == run, "both command words do the same");
  }
  const SupportedParameterTable table = TableOf::of(word);
  if (run.line) {
    if (const std::optional<Tokens> longForm = withLongForm(tokens, table)) {
      const std::optional<std::string> rewritten = translate(*longForm).line;
      check(!rewritten || rewritten == run.line, "an option's long form translates as its short");
    }
    Tokens extended = tokens;
    extended.push_back("--x" + tokens.back());
    const std::string seen = extended.back().c_str();
    const std::string name = seen.substr(0, seen.find('='));
    const auto known = [&](const auto& row) { return row.first == name || row.second == name; };
    if (std::none_of(table.begin(), table.end(), known)) {
      const Translated refused = translate(extended);
      check(!refused.line && refused.flushed.empty() &&
                refused.all == "The parameter: " + name + " is not supported!",
            "an unknown long option is refused by its name, unflushed");
    }
  }
  checkSelfTestEchoesTheVector(tokens);
  return 0;
}
