// The path functions and exec, run in-process from the build's bin directory, where the
// stand-in Fendix lies beside this test program.
#include "tovak/process_path.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cmath>
#include <string>

#include "support/capture.h"
#include "support/child_process.h"
#include "tovak/entry.h"

namespace {

std::string realDirectory(const std::string& path) {
  char resolved[4096];
  return std::string(realpath(path.c_str(), resolved)) + "/";
}

TEST(PlatformTest, FindsTheExecutableAndModuleDirectories) {
  const std::string bin = realDirectory(binDirectory());
  EXPECT_EQ(GetCurProcessPathLin(), bin);
  EXPECT_EQ(GetCurProcessPath(), bin);
  EXPECT_EQ(GetSysTempPath(), "/tmp/");
  // This program is linked into the executable itself.
  EXPECT_EQ(GetModulePathLin(reinterpret_cast<void*>(&realDirectory)), bin);
  // libc comes from a system directory, resolved to its real path.
  const std::string libc = GetModulePathLin(reinterpret_cast<void*>(&::getenv));
  EXPECT_EQ(libc, realDirectory(libc));
  EXPECT_NE(libc, bin);
  EXPECT_EQ(GetModulePathLin(nullptr), "");
}

TEST(PlatformTest, ExecPrintsTheFullCommandAndReturnsTheRawStatus) {
  const std::string bin = realDirectory(binDirectory());
  struct Case {
    const char* exitCode;
    int status;
  };
  for (const Case& c : {Case{"0", 0}, Case{"1", 256}, Case{"3", 768}}) {
    setenv("FENDIX_EXIT_CODE", c.exitCode, 1);
    StdoutCapture capture;
    EXPECT_EQ(exec("update compare --output /var/log/Zantor_Support/"), c.status);
    EXPECT_EQ(capture.text(), "The translated command is: \n" + bin +
                                  "./Fendix update compare --output /var/log/Zantor_Support/\n"
                                  "The fendx return code is: " +
                                  std::to_string(c.status) + "\n");
  }
  unsetenv("FENDIX_EXIT_CODE");
  StdoutCapture capture;
  EXPECT_EQ(exec(""), 0);
  EXPECT_EQ(capture.text(), "The translated command is: \n" + bin +
                                "./Fendix \nThe fendx return code is: 0\n");
}

}  // namespace
