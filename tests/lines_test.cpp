// Runs every case of lines.txt in-process and compares the outcome and the exact bytes
// printed. A legacy line is translated as dll_main translates it (flushed and unflushed output
// told apart, the caller's strings checked for blanks); the other kinds ask the parameter
// queries or run the self-test. launch_test.py runs the same legacy lines through the launcher.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "support.h"
#include "tovak/parameters.h"
#include "tovak/test.h"

namespace {

struct Case {
  std::string label;
  std::vector<std::string> words;  // the command word and the tokens
  std::string outcome;             // a Fendix line, "refused", "self-test" or "ask ..."
  std::string flushed, unflushed;
};

// Blank-separated words; a word in double quotes may hold blanks or be empty.
std::vector<std::string> wordsOf(const std::string& text) {
  std::vector<std::string> words;
  for (std::size_t at = text.find_first_not_of(' '); at < text.size();
       at = text.find_first_not_of(' ', at)) {
    const bool quoted = text[at] == '"';
    const std::size_t end = std::min(text.find(quoted ? '"' : ' ', at + quoted), text.size());
    words.push_back(text.substr(at + quoted, end - at - quoted));
    at = end + quoted;
  }
  return words;
}

// The cases of the data file; its first lines say how one is written.
std::vector<Case> casesIn(const std::string& path) {
  std::vector<Case> cases;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    const std::size_t colon = line.find(": "), arrow = line.find(" =>");
    std::size_t at = std::min({line.find(" > ", arrow), line.find(" ~ ", arrow), line.size()});
    const std::size_t start = std::min(arrow + 4, at);
    Case c{line.substr(0, colon), wordsOf(line.substr(colon + 1, arrow - colon - 1)),
           line.substr(start, at - start), "", ""};
    for (std::size_t bar = 0; at < line.size(); at = bar + 1) {
      bar = line.find('|', at);
      const std::string text = line.substr(at + 3, bar - at - 3);
      (line[at + 1] == '>' ? c.flushed : c.unflushed) += text + (line[at + 1] == '>' ? "\n" : "");
    }
    cases.push_back(c);
  }
  return cases;
}

// What the queries (after what they print themselves) or the self-test print for the vector
// "/opt/t/tovak <words>".
std::string askedOf(const std::vector<std::string>& words, const std::vector<std::string>& how) {
  std::vector<std::string> arguments{"/opt/t/tovak"};
  arguments.insert(arguments.end(), words.begin(), words.end());
  ArgumentVector vector(arguments);
  OutputCapture capture;
  Parameters parameters(vector.argc(), vector.argv());
  if (how[0] == "self-test") {
    ::Test test(vector.argc(), vector.argv());  // not GoogleTest's
    test.printCommandAndParamaters();
    test.testParameters();
    return capture.all();
  }
  const std::string &first = how[1], &second = how[2];
  const bool set = parameters.isSetParameter(first, second);
  const std::string value = parameters.getParameterValue(first, second);
  SupportedParameterTable table = {{"-q", second}};
  std::printf("%d%d%d %s set=%d value=%s single=%s listed=%d\n",
              parameters.isNotStartWithDash(first), parameters.isStartWithSingleDash(first),
              parameters.isStartWithDoubleDash(first), parameters.getParameterName(first).c_str(),
              set, value.c_str(), parameters.getSingleParameterValue(first).c_str(),
              parameters.ifParameterInVectorpair(first, table));
  return capture.all();
}

TEST(LinesTest, EachCaseGivesItsOutcomeAndExactOutput) {
  const std::vector<Case> cases = casesIn(TOVAK_LINES_FILE);
  ASSERT_GT(cases.size(), 50u);
  for (const Case& c : cases) {
    const std::vector<std::string> how = wordsOf(c.outcome);
    if (!how.empty() && (how[0] == "ask" || how[0] == "self-test")) {
      EXPECT_EQ(askedOf(c.words, how), c.flushed + c.unflushed) << c.label;
      continue;
    }
    const Translated translated = translate(c.words);
    EXPECT_EQ(translated.line, c.outcome == "refused"
                                   ? std::nullopt
                                   : std::optional(c.outcome + " --output /var/log/Zantor_Support/"))
        << c.label;
    EXPECT_EQ(translated.flushed, c.flushed) << c.label;
    EXPECT_EQ(translated.all, c.flushed + c.unflushed) << c.label;
    EXPECT_TRUE(translated.blanked) << c.label;
  }
}

}  // namespace
