// The parsed legacy line: token classes, the shape check and the option queries.
#include "tovak/parameters.h"

#include <gtest/gtest.h>

#include "support.h"

namespace {

struct Line {
  explicit Line(std::vector<std::string> tokens)
      : vector([&] {
          tokens.insert(tokens.begin(), {"tovak", "co"});
          return tokens;
        }()),
        parameters(vector.argc(), vector.argv()) {}
  ArgumentVector vector;
  Parameters parameters;
};

TEST(ParametersTest, ClassifiesTokensAndNamesOptions) {
  struct Case {
    std::string token;
    bool notDash, single, twoDashes;
    std::string name;
  };
  Line line({});
  // clang-format off
  for (const Case& c : std::vector<Case>{
           {"", true, false, false, ""}, {"-", false, false, false, ""},
           {"--", false, false, true, "--"}, {"-m=5", false, true, false, "-m=5"},
           {"--os=x", false, false, true, "--os"}, {"--=x", false, false, true, "--"},
           {"---x", false, false, true, "---x"}, {"x", true, false, false, ""}}) {
    // clang-format on
    EXPECT_EQ(line.parameters.isNotStartWithDash(c.token), c.notDash) << c.token;
    EXPECT_EQ(line.parameters.isStartWithSingleDash(c.token), c.single) << c.token;
    EXPECT_EQ(line.parameters.isStartWithDoubleDash(c.token), c.twoDashes) << c.token;
    EXPECT_EQ(line.parameters.getParameterName(c.token), c.name) << c.token;
  }
}

TEST(ParametersTest, ShapeCheckNamesTheRuleBroken) {
  const std::string first = "The first paramater should start with - or --.\n";
  const std::string longRule =
      "If the parameter starts with --, the next parameter should start with - or --.\n";
  const std::string shortRule =
      "If the parameter starts with -, at least one of the next two parameters should start "
      "with - or --.\n";
  // clang-format off
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{}, ""}, {{"-x", "v"}, ""}, {{"-x", "v", "w"}, shortRule}, {{"--name", "v"}, longRule},
      {{"--name=v", "-x", "v"}, ""}, {{""}, first}, {{"-", "a", "b", "c"}, ""},
      {{"-a", "x", "y", "--b", "z"}, longRule},  // the long rule is checked over all first
      {{"-x", "-5"}, ""}};
  // clang-format on
  for (const auto& [tokens, reason] : cases) {
    Line line(tokens);
    StdoutCapture capture;
    EXPECT_EQ(line.parameters.checkValidParametersFormat(), reason.empty());
    EXPECT_EQ(capture.text(),
              reason.empty() ? "" : "The command parameters are not vaild!\n" + reason)
        << ::testing::PrintToString(tokens);
  }
}

TEST(ParametersTest, QueriesReadEitherFormAndReportBadArguments) {
  struct Case {
    std::vector<std::string> tokens;
    std::string parameter1, parameter2;
    bool set;
    std::string value, printed;  // printed by isSetParameter and getParameterValue together
  };
  // clang-format off
  const std::vector<Case> cases = {
      {{"-m"}, "-m", "--mt", true, "", ""},
      {{"-m", "-x", "5"}, "-x", "", true, "5", ""},
      {{"-m", "a", "-m", "b"}, "-m", "", true, "a", ""},
      {{"-m", "", "-m", "b"}, "-m", "", true, "", ""},
      {{"--mt=a=b", "--mt=c"}, "--mt", "-m", true, "a=b", ""},
      {{"--mt", "--mtx=1"}, "--mt", "", true, "", ""},
      {{"-m=5"}, "-m", "", false, "", ""},
      {{"-m", "a", "--mt=b"}, "--mt", "-m", true, "b",
       "Warning: Should not set \"--mt\" and \"-m\" at the same time.\nUsing \"--mt\" this time.\n"},
      {{"-m", "a"}, "", "", false, "",
       " The parameter1 should not be empty!\n The parameter1 should not be empty!\n"},
      {{"-m", "a"}, "m", "", false, "",
       " The parameter should start with dash!\n The parameter1 should start with dash!\n"},
      {{"-m", "a"}, "-m", "m", false, "",
       " The parameter2 should start with dash!\n The parameter2 should start with dash!\n"},
      {{"--a=b"}, "--a=b", "-", false, "", ""},
  };
  // clang-format on
  for (const Case& c : cases) {
    Line line(c.tokens);
    StdoutCapture capture;
    EXPECT_EQ(line.parameters.isSetParameter(c.parameter1, c.parameter2), c.set);
    EXPECT_EQ(line.parameters.getParameterValue(c.parameter1, c.parameter2), c.value);
    EXPECT_EQ(capture.text(), c.printed) << ::testing::PrintToString(c.tokens);
  }
  Line both({"-m", "a", "--mt=b"});
  EXPECT_EQ(both.parameters.getSingleParameterValue("--mt"), "b");
}

TEST(ParametersTest, SupportedCheckReportsTheFirstProblem) {
  SupportedParameterTable table = {{"-m", "--mt"}, {"-s", "--scan"}};
  SupportedParameterTable withLongOnly = {{"--xml", ""}};
  // clang-format off
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"-m", "7X", "--scan", "-s"}, ""},  // both forms as flags: no conflict
      {{"--bogus=1", "-q"}, "The parameter: --bogus is not supported!"},
      {{"-m", "a", "--mt=b"}, "Can not set \"-m\" and \"--mt\" at the same time.\n"},
      {{"-s", "v", "--scan=w", "-q"}, "The parameter: -q is not supported!"},
      {{"-", "v"}, "The parameter:  is not supported!"}};
  // clang-format on
  for (const auto& [tokens, printed] : cases) {
    Line line(tokens);
    StdoutCapture capture;
    EXPECT_EQ(line.parameters.checkSupportedParameters(table), printed.empty());
    EXPECT_EQ(capture.text(), printed) << ::testing::PrintToString(tokens);
  }
  Line loneDash({"-"});
  EXPECT_TRUE(loneDash.parameters.checkSupportedParameters(withLongOnly));
  EXPECT_TRUE(loneDash.parameters.ifParameterInVectorpair("--mt=x", table));
}

}  // namespace
