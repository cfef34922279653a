// Vectors with missing strings, as a careless caller may hand them over: they read as empty.
#include <gtest/gtest.h>

#include "support.h"
#include "tovak/tovak.h"

namespace {

TEST(MissingStringsTest, ReadAsEmpty) {
  char dash[] = "-x";
  char* withHoles[] = {nullptr, nullptr, dash, nullptr};
  Parameters holes(4, withHoles);
  EXPECT_EQ(holes.getCommand(), "");
  EXPECT_TRUE(holes.isSetParameter("-x", ""));
  EXPECT_EQ(Parameters(3, nullptr).getCommand(), "");
  OutputCapture capture;
  EXPECT_EQ(dll_main(2, nullptr), 1);
  EXPECT_EQ(dll_main(3, withHoles), 1);
  ::Test(2, nullptr).printCommandAndParamaters();
  ::Test(2, nullptr).testParameters();
  EXPECT_EQ(capture.flushed(),
            "Please specify the command!\nPlease specify the command!\n"
            "argc: 2\nargv[0]:\nargv[1]:\nfendixParameters:  \n"
            "Test paramters.checkValidParametersFormat ... \nReport true!\n"
            "Test paramters.isSetParameter ... \nReport false!\n"
            "Test paramters.getParameterValue ... \nValue is: \n");
}

}  // namespace
