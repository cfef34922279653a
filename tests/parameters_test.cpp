// The parsed legacy line: token classes, the shape check and the option queries.
#include "tovak/parameters.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/capture.h"
#include "support/legacy_line.h"

namespace {

// Parameters built from "tovak word tokens...".
struct ParsedLine {
  explicit ParsedLine(std::vector<std::string> tokens, std::string word = "compare")
      : vector([&] {
          std::vector<std::string> all{"tovak", std::move(word)};
          all.insert(all.end(), tokens.begin(), tokens.end());
          return all;
        }()),
        parameters(vector.argc(), vector.argv()) {}
  ArgumentVector vector;
  Parameters parameters;
};

TEST(ParametersTest, ConstructionKeepsWordAndTokensWhole) {
  ArgumentVector none({});
  ArgumentVector pathOnly({"tovak"});
  ArgumentVector line({"tovak", "co", "--local=/a b", "", "-l"});
  Parameters empty(0, none.argv());
  Parameters onlyPath(1, pathOnly.argv());
  Parameters full(line.argc(), line.argv());
  EXPECT_EQ(empty.getCommand(), "");
  EXPECT_EQ(onlyPath.getCommand(), "");
  EXPECT_EQ(full.getCommand(), "co");
  EXPECT_EQ(full.getSingleParameterValue("--local"), "/a b");
  // The empty token is kept: "-l" after it is the last token and has no value.
  EXPECT_TRUE(full.isSetParameter("-l", ""));
  EXPECT_EQ(full.getSingleParameterValue("-l"), "");
}

TEST(ParametersTest, ClassifiesTokensAndNamesOptions) {
  struct Case {
    std::string token;
    bool notDash, single, twoDashes;
    std::string name;
  };
  const std::vector<Case> cases = {
      {"", true, false, false, ""},         {"-", false, false, false, ""},
      {"--", false, false, true, "--"},     {"-m", false, true, false, "-m"},
      {"-m=5", false, true, false, "-m=5"}, {"--os", false, false, true, "--os"},
      {"--os=x", false, false, true, "--os"}, {"--=x", false, false, true, "--"},
      {"---x", false, false, true, "---x"}, {"x", true, false, false, ""},
  };
  ParsedLine line({});
  for (const Case& c : cases) {
    SCOPED_TRACE("token '" + c.token + "'");
    EXPECT_EQ(line.parameters.isNotStartWithDash(c.token), c.notDash);
    EXPECT_EQ(line.parameters.isStartWithSingleDash(c.token), c.single);
    EXPECT_EQ(line.parameters.isStartWithDoubleDash(c.token), c.twoDashes);
    EXPECT_EQ(line.parameters.getParameterName(c.token), c.name);
  }
}

TEST(ParametersTest, ShapeCheckAcceptsOrRejectsWithRuleMessage) {
  const std::string kFirst = "The first paramater should start with - or --.\n";
  const std::string kLong =
      "If the parameter starts with --, the next parameter should start with - or --.\n";
  const std::string kShort =
      "If the parameter starts with -, at least one of the next two parameters should start "
      "with - or --.\n";
  struct Case {
    std::vector<std::string> tokens;
    std::string reason;  // empty: accepted
  };
  const std::vector<Case> cases = {
      {{}, ""},
      {{"-x", "v"}, ""},
      {{"-x", "v", "w"}, kShort},
      {{"--name", "v"}, kLong},
      {{"--name=v", "-x", "v"}, ""},
      {{"v"}, kFirst},
      {{""}, kFirst},
      {{"-a", "x", "y", "--b", "z"}, kLong},  // the long rule is checked over all first
      {{"-", "a", "b", "c"}, ""},
      {{"--a", "-", "b"}, ""},
      {{"-x", "-5"}, ""},
      {{"-x", "v", "-y", "a", "b"}, kShort},
      {{"-x", "a b", "-y"}, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.tokens));
    ParsedLine line(c.tokens);
    StdoutCapture capture;
    const bool valid = line.parameters.checkValidParametersFormat();
    EXPECT_EQ(valid, c.reason.empty());
    EXPECT_EQ(capture.text(),
              c.reason.empty() ? "" : "The command parameters are not vaild!\n" + c.reason);
  }
}

TEST(ParametersTest, SingleValueFollowsTheOptionSyntax) {
  struct Case {
    std::vector<std::string> tokens;
    std::string name, value;
  };
  const std::vector<Case> cases = {
      {{}, "-m", ""},
      {{"-m"}, "-m", ""},
      {{"-m", "-x", "5"}, "-m", ""},
      {{"-m", "-x", "5"}, "-x", "5"},
      {{"-m", "a", "-m", "b"}, "-m", "a"},
      {{"-m", "-q", "-m", "b"}, "-m", "b"},
      {{"--machine-type=a", "--machine-type=b"}, "--machine-type", "a"},
      {{"--machine-type", "--machine-type=b"}, "--machine-type", "b"},
      {{"--machine-type="}, "--machine-type", ""},
      {{"--machine-type=a=b"}, "--machine-type", "a=b"},
      {{"-m", ""}, "-m", ""},
      {{"-m=5"}, "-m", ""},
      {{"--machine-typex=5"}, "--machine-type", ""},
      {{"-m", "x"}, "m", ""},
      {{"-m", "x"}, "", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.tokens) + " name " + c.name);
    ParsedLine line(c.tokens);
    EXPECT_EQ(line.parameters.getSingleParameterValue(c.name), c.value);
  }
}

TEST(ParametersTest, QueriesInEitherFormWithTheirMessages) {
  const std::string kWarnM =
      "Warning: Should not set \"-m\" and \"--machine-type\" at the same time.\n"
      "Using \"-m\" this time.\n";
  struct Case {
    std::vector<std::string> tokens;
    std::string parameter1, parameter2;
    bool isSet;
    std::string value;
    std::string setPrinted, valuePrinted;
  };
  const std::vector<Case> cases = {
      {{}, "-m", "--machine-type", false, "", "", ""},
      {{"-m"}, "-m", "--machine-type", true, "", "", ""},
      {{"--machine-type"}, "-m", "--machine-type", true, "", "", ""},
      {{"--machine-type=7X"}, "-m", "--machine-type", true, "7X", "", ""},
      {{"-m", "a", "--machine-type=b"}, "-m", "--machine-type", true, "a", "", kWarnM},
      {{"-m", "a", "--machine-type=b"}, "--machine-type", "-m", true, "b", "",
       "Warning: Should not set \"--machine-type\" and \"-m\" at the same time.\n"
       "Using \"--machine-type\" this time.\n"},
      {{"--xml"}, "--xml", "", true, "", "", ""},
      {{"-", "x", "--a=b"}, "-", "", false, "", "", ""},
      {{"--a=b", "-"}, "--a=b", "--a", true, "b", "", ""},
      {{"--a=b"}, "--a=b", "", false, "", "", ""},
      {{"-m", "a"}, "", "--machine-type", false, "", " The parameter1 should not be empty!\n",
       " The parameter1 should not be empty!\n"},
      {{"-m", "a"}, "m", "", false, "", " The parameter should start with dash!\n",
       " The parameter1 should start with dash!\n"},
      {{"-m", "a"}, "-m", "machine", false, "", " The parameter2 should start with dash!\n",
       " The parameter2 should start with dash!\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.tokens) + " " + c.parameter1 + "/" + c.parameter2);
    ParsedLine line(c.tokens);
    {
      StdoutCapture capture;
      EXPECT_EQ(line.parameters.isSetParameter(c.parameter1, c.parameter2), c.isSet);
      EXPECT_EQ(capture.text(), c.setPrinted);
    }
    StdoutCapture capture;
    EXPECT_EQ(line.parameters.getParameterValue(c.parameter1, c.parameter2), c.value);
    EXPECT_EQ(capture.text(), c.valuePrinted);
  }
}

TEST(ParametersTest, SupportedCheckReportsFirstProblemOnly) {
  SupportedParameterTable table = {{"-m", "--machine-type"}, {"--xml", ""}, {"-s", "--scan"}};
  struct Case {
    std::vector<std::string> tokens;
    bool supported;
    std::string printed;
  };
  const std::vector<Case> cases = {
      {{}, true, ""},
      {{"-m", "7X", "--xml"}, true, ""},
      {{"--scan", "-s"}, true, ""},  // both forms as flags: no conflict
      {{"--bogus=1", "-q"}, false, "The parameter: --bogus is not supported!"},
      {{"-m=5"}, false, "The parameter: -m=5 is not supported!"},
      {{"-m", "--scan"}, true, ""},
      {{"-m", "a", "--machine-type=b"}, false,
       "Can not set \"-m\" and \"--machine-type\" at the same time.\n"},
      {{"-s", "v", "--scan=w", "-q"}, false, "The parameter: -q is not supported!"},
      {{"-"}, true, ""},  // a lone dash has an empty name, which "--xml"'s row carries
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.tokens));
    ParsedLine line(c.tokens);
    StdoutCapture capture;
    EXPECT_EQ(line.parameters.checkSupportedParameters(table), c.supported);
    EXPECT_EQ(capture.text(), c.printed);
  }
}

TEST(ParametersTest, LoneDashWithoutEmptyRowIsNamedEmpty) {
  SupportedParameterTable table = {{"-m", "--machine-type"}};
  SupportedParameterTable none;
  ParsedLine line({"-", "value"});
  StdoutCapture capture;
  EXPECT_FALSE(line.parameters.checkSupportedParameters(table));
  EXPECT_EQ(capture.text(), "The parameter:  is not supported!");
  EXPECT_TRUE(line.parameters.ifParameterInVectorpair("--machine-type=x", table));
  EXPECT_FALSE(line.parameters.ifParameterInVectorpair("-m=x", table));
  EXPECT_FALSE(line.parameters.ifParameterInVectorpair("-m", none));
  ParsedLine valuesOnly({"--x=1"});
  EXPECT_FALSE(valuesOnly.parameters.checkSupportedParameters(none));
}

}  // namespace
