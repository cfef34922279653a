// The exported self-test: its echo of the vector and the three checks it reports on.
#include <gtest/gtest.h>

#include "support.h"
#include "tovak/test.h"

namespace {

TEST(SelfTestTest, EchoesTheVectorAndRunsAllThreeChecks) {
  const std::string format = "Test paramters.checkValidParametersFormat ... \n";
  const std::string set = "Test paramters.isSetParameter ... \n";
  const std::string value = "Test paramters.getParameterValue ... \n";
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{},
       "argc: 0\nfendixParameters: \n" + format + "Report true!\n" + set + "Report false!\n" +
           value + "Value is: \n"},
      {{"/bin/t", "co", "a b", "-m", "7X"},
       "argc: 5\nargv[0]:/bin/t\nargv[1]:co\nargv[2]:a b\nargv[3]:-m\nargv[4]:7X\n"
       "fendixParameters: co \"a b\" -m 7X \n" +
           format +
           "The command parameters are not vaild!\nThe first paramater should start with - or --.\n"
           "Report false!\n" +
           set + "Report true!\n" + value + "Value is: 7X\n"},
      {{"t", "co", "-m", "a", "--machinetype=b"},
       "argc: 5\nargv[0]:t\nargv[1]:co\nargv[2]:-m\nargv[3]:a\nargv[4]:--machinetype=b\n"
       "fendixParameters: co -m a --machinetype=b \n" +
           format + "Report true!\n" + set + "Report true!\n" + value +
           "Warning: Should not set \"-m\" and \"--machinetype\" at the same time.\n"
           "Using \"-m\" this time.\nValue is: a\n"},
  };
  for (const auto& [arguments, printed] : cases) {
    ArgumentVector vector(arguments);
    ::Test test(vector.argc(), vector.argv());  // not the GoogleTest fixture
    StdoutCapture capture;
    test.printCommandAndParamaters();
    test.testParameters();
    EXPECT_EQ(capture.text(), printed);
  }
}

}  // namespace
