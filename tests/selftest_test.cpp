// The exported self-test: its echo of the vector and the three checks it reports on.
#include "tovak/test.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/capture.h"
#include "support/legacy_line.h"

namespace {

std::string printedBy(std::vector<std::string> arguments, bool echo) {
  ArgumentVector vector(std::move(arguments));
  Test test(vector.argc(), vector.argv());
  StdoutCapture capture;
  if (echo) {
    test.printCommandAndParamaters();
  } else {
    test.testParameters();
  }
  return capture.text();
}

TEST(SelfTestTest, EchoesTheVectorAndJoinsItQuoted) {
  struct Case {
    std::vector<std::string> arguments;
    std::string printed;
  };
  const std::vector<Case> cases = {
      {{}, "argc: 0\nfendixParameters: \n"},
      {{"/bin/t"}, "argc: 1\nargv[0]:/bin/t\nfendixParameters: \n"},
      {{"/bin/t", "co", "a b", "-l"},
       "argc: 4\nargv[0]:/bin/t\nargv[1]:co\nargv[2]:a b\nargv[3]:-l\n"
       "fendixParameters: co \"a b\" -l \n"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(printedBy(c.arguments, true), c.printed);
  }
}

TEST(SelfTestTest, RunsAllThreeChecksWhateverTheirResults) {
  const std::string kFormat = "Test paramters.checkValidParametersFormat ... \n";
  const std::string kSet = "Test paramters.isSetParameter ... \n";
  const std::string kValue = "Test paramters.getParameterValue ... \n";
  struct Case {
    std::vector<std::string> arguments;
    std::string printed;
  };
  const std::vector<Case> cases = {
      {{"t", "co", "-m", "7X"},
       kFormat + "Report true!\n" + kSet + "Report true!\n" + kValue + "Value is: 7X\n"},
      {{"t", "co", "--machinetype=9"},
       kFormat + "Report true!\n" + kSet + "Report true!\n" + kValue + "Value is: 9\n"},
      {{"t", "co", "-m", "a", "--machinetype=b"},
       kFormat + "Report true!\n" + kSet + "Report true!\n" + kValue +
           "Warning: Should not set \"-m\" and \"--machinetype\" at the same time.\n"
           "Using \"-m\" this time.\nValue is: a\n"},
      {{"t", "co", "x", "y"},
       kFormat +
           "The command parameters are not vaild!\n"
           "The first paramater should start with - or --.\nReport false!\n" +
           kSet + "Report false!\n" + kValue + "Value is: \n"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(printedBy(c.arguments, false), c.printed);
  }
}

}  // namespace
