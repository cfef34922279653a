// Faults from outside the library: an allocation that fails while the arguments are copied,
// and a Fendix that is missing or cannot be run. The shell's status is passed through.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/child_process.h"

namespace fs = std::filesystem;

namespace {

// A launcher and library copied into a directory of their own, without the stand-in.
class LonelyLauncher {
 public:
  LonelyLauncher() {
    char pattern[] = "/tmp/tovak-fault-XXXXXX";
    directory_ = mkdtemp(pattern);
    for (const char* name : {"tovak", "libtovak.so"}) {
      fs::copy_file(fs::path(binDirectory()) / name, directory_ / name);
    }
  }
  ~LonelyLauncher() { fs::remove_all(directory_); }
  LonelyLauncher(const LonelyLauncher&) = delete;
  LonelyLauncher& operator=(const LonelyLauncher&) = delete;

  std::string path(const std::string& name) const { return (directory_ / name).string(); }
  std::string dir() const { return directory_.string() + "/"; }

 private:
  fs::path directory_;
};

std::string launchLines(const std::string& fullCommand, int status) {
  return "The translated command is: \n" + fullCommand +
         "\nThe fendx return code is: " + std::to_string(status) + "\n";
}

TEST(FaultInjectionTest, FailedArgumentCopyEndsTheProcessQuietlyWithZero) {
  // The argument of 54321 bytes is copied into an allocation of 54322, which fails.
  const std::string argument(54321, 'x');
  const ChildResult result =
      runChild(binDirectory() + "/tovak", {"compare", "-l", argument},
               {"LD_PRELOAD=" TOVAK_FAILING_MALLOC, "TOVAK_FAIL_MALLOC_SIZE=54322"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "");
}

TEST(FaultInjectionTest, MissingFendixGivesTheShellsNotFoundStatus) {
  LonelyLauncher launcher;
  const ChildResult result = runChild(launcher.path("tovak"), {"qk", "-s"});
  EXPECT_EQ(result.out, launchLines(launcher.dir() +
                                        "./Fendix update scan --output /var/log/Zantor_Support/",
                                    32512));
  EXPECT_EQ(result.exitCode, 127);
  EXPECT_NE(result.err.find("Fendix"), std::string::npos) << result.err;
}

TEST(FaultInjectionTest, FendixThatCannotRunGivesTheShellsStatus) {
  LonelyLauncher launcher;
  std::ofstream(launcher.path("Fendix")) << "not a program\n";
  chmod(launcher.path("Fendix").c_str(), 0644);
  const ChildResult result = runChild(launcher.path("tovak"), {"qk"});
  EXPECT_EQ(result.out,
            launchLines(launcher.dir() + "./Fendix  --output /var/log/Zantor_Support/", 32256));
  EXPECT_EQ(result.exitCode, 126);
}

TEST(FaultInjectionTest, LauncherWithoutLibraryOrEntryPointSaysSo) {
  LonelyLauncher launcher;
  fs::remove(launcher.path("libtovak.so"));
  ChildResult result = runChild(launcher.path("tovak"), {"co"});
  EXPECT_EQ(result.exitCode, 125);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err.rfind("tovak: cannot load libtovak.so: ", 0), 0u) << result.err;
  // A loadable library that lacks dll_main.
  fs::copy_file(TOVAK_FAILING_MALLOC, launcher.path("libtovak.so"));
  result = runChild(launcher.path("tovak"), {"co"});
  EXPECT_EQ(result.exitCode, 125);
  EXPECT_EQ(result.err, "tovak: libtovak.so has no dll_main\n");
}

}  // namespace
