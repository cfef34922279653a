// Runs every case of lines.txt and compares the outcome and the exact bytes printed. A
// legacy line is translated in-process (flushed and unflushed output told apart, the
// caller's strings checked for blanks) and then run through build/bin/tovak against the
// stand-in Fendix; the other kinds ask the parameter queries or run the self-test.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "support.h"
#include "tovak/parameters.h"
#include "tovak/test.h"

namespace {

const std::string kOutput = " --output /var/log/Zantor_Support/";

struct Case {
  std::string label;
  std::vector<std::string> words;  // the command word and the tokens
  std::string outcome;             // a Fendix line, "refused", "self-test" or "ask ..."
  std::string flushed, unflushed;
};

// Blank-separated words; a word in double quotes may hold blanks or be empty.
std::vector<std::string> wordsOf(const std::string& text) {
  std::vector<std::string> words;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == ' ') continue;
    const bool quoted = text[at] == '"';
    const std::size_t end = text.find(quoted ? '"' : ' ', at + quoted);
    words.push_back(text.substr(at + quoted, end - at - quoted));
    at = end == std::string::npos ? text.size() : end + quoted;
  }
  return words;
}

// Reads the cases of the data file; its first lines say how one is written.
std::vector<Case> casesIn(const std::string& path) {
  std::vector<Case> cases;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    const std::size_t colon = line.find(": ");
    const std::size_t arrow = line.find(" =>");
    const std::size_t cut = std::min(line.find(" > ", arrow), line.find(" ~ ", arrow));
    Case c;
    c.label = line.substr(0, colon);
    c.words = wordsOf(line.substr(colon + 1, arrow - colon - 1));
    const std::size_t start = std::min(arrow + 4, line.size());
    c.outcome = line.substr(start, cut - start);
    for (std::size_t at = cut; at < line.size();) {
      const std::size_t bar = line.find('|', at + 3);
      (line[at + 1] == '>' ? c.flushed : c.unflushed) +=
          line.substr(at + 3, bar - at - 3) + (line[at + 1] == '>' ? "\n" : "");
      at = bar + 1;
    }
    cases.push_back(c);
  }
  return cases;
}

// Prints what the queries answer, after whatever they print themselves.
void ask(Parameters& parameters, const std::vector<std::string>& names) {
  const std::string& first = names[1];
  const std::string& second = names[2];
  std::printf("set %d\n", parameters.isSetParameter(first, second));
  std::printf("value %s\n", parameters.getParameterValue(first, second).c_str());
  std::printf("single %s\n", parameters.getSingleParameterValue(first).c_str());
  SupportedParameterTable table = {{"-q", second}};
  std::printf("listed %d\n", parameters.ifParameterInVectorpair(first, table));
}

// Prints each token's classes (no dash, one dash, two dashes) and option name.
void classify(Parameters& parameters, const std::vector<std::string>& tokens) {
  for (const std::string& token : tokens) {
    std::printf("%d%d%d %s\n", parameters.isNotStartWithDash(token),
                parameters.isStartWithSingleDash(token), parameters.isStartWithDoubleDash(token),
                parameters.getParameterName(token).c_str());
  }
}

// The words the shell makes of a translated line: split at blanks, double quotes removed.
std::vector<std::string> shellWords(const std::string& line) {
  std::vector<std::string> words(1);
  bool quoted = false;
  for (const char c : line) {
    if (c == '"') quoted = !quoted;
    else if (c != ' ' || quoted) words.back() += c;
    else if (!words.back().empty()) words.emplace_back();
  }
  if (words.back().empty()) words.pop_back();
  return words;
}

// What the queries or the self-test print for the vector "/opt/t/tovak <words>".
std::string askedOf(const std::vector<std::string>& words, const std::vector<std::string>& kind) {
  std::vector<std::string> arguments{"/opt/t/tovak"};
  arguments.insert(arguments.end(), words.begin(), words.end());
  ArgumentVector vector(arguments);
  OutputCapture capture;
  Parameters parameters(vector.argc(), vector.argv());
  if (kind[0] == "ask") ask(parameters, kind);
  if (kind[0] == "tokens") classify(parameters, words);
  if (kind[0] == "self-test") {
    ::Test test(vector.argc(), vector.argv());  // not GoogleTest's
    test.printCommandAndParamaters();
    test.testParameters();
  }
  return capture.all();
}

void expectTranslated(const Case& c) {
  const std::optional<std::string> line =
      c.outcome == "refused" ? std::nullopt : std::optional(c.outcome + kOutput);
  const Translated translated = translate(c.words);
  EXPECT_EQ(translated.line, line) << c.label;
  EXPECT_EQ(translated.flushed, c.flushed) << c.label;
  EXPECT_EQ(translated.all, c.flushed + c.unflushed) << c.label;
  EXPECT_TRUE(translated.blanked) << c.label;
  const std::string bin = binDirectory();
  const ChildResult run = runChild(bin + "tovak", "tovak", c.words);
  const std::string launch = line ? launched(bin, *line, 0, standIn(shellWords(*line))) : "";
  EXPECT_EQ(run.out, c.flushed + c.unflushed + launch) << c.label;
  EXPECT_EQ(run.exitCode, line ? 0 : 1) << c.label;
}

TEST(LinesTest, EachCaseGivesItsOutcomeAndExactOutput) {
  const std::vector<Case> cases = casesIn(TOVAK_LINES_FILE);
  ASSERT_GT(cases.size(), 50u);
  for (const Case& c : cases) {
    const std::vector<std::string> kind = wordsOf(c.outcome);
    if (kind.empty() || (kind[0] != "ask" && kind[0] != "tokens" && kind[0] != "self-test")) {
      expectTranslated(c);
      continue;
    }
    EXPECT_EQ(askedOf(c.words, kind), c.flushed + c.unflushed) << c.label;
  }
}

}  // namespace
