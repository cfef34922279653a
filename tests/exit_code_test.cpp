// The launcher's exit code for each kind of status dll_main returns.
#include "exit_code.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

TEST(ExitCodeTest, StatusesBecomeExitCodes) {
  for (const auto& [status, code] : std::vector<std::pair<int, int>>{
           {0, 0}, {1, 1}, {256, 1}, {768, 3}, {32512, 127}, {9, 137}, {-1, 255}, {0x137f, 255}}) {
    EXPECT_EQ(launcher::exitCodeFor(status), code) << status;
  }
}
