// The launch outside the everyday lines: the path functions under odd program names and
// places, exec itself, the status-to-exit-code mapping, and build/bin/tovak against a very
// long line and the faults the shell and the loader report.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "exit_code.h"
#include "support.h"
#include "tovak/entry.h"
#include "tovak/process_path.h"

namespace fs = std::filesystem;

namespace {

const std::string kOutput = " --output /var/log/Zantor_Support/";

TEST(LaunchTest, PathsAndAnEmptyCommandLine) {
  const std::string bin = binDirectory();
  EXPECT_EQ(GetCurProcessPath(), bin);
  EXPECT_EQ(GetSysTempPath(), "/tmp/");
  EXPECT_EQ(GetModulePathLin(reinterpret_cast<void*>(&binDirectory)), bin);
  const std::string libc = GetModulePathLin(reinterpret_cast<void*>(&::getenv));
  EXPECT_TRUE(fs::exists(libc + "libc.so.6")) << libc;
  EXPECT_EQ(GetModulePathLin(nullptr), "");
  OutputCapture capture;
  EXPECT_EQ(exec(""), 0);  // no arguments at all: the command ends in "Fendix "
  EXPECT_EQ(capture.flushed(), launched(bin, "", 0, standIn({})));
}

TEST(LaunchTest, PathsUnderOddProgramNamesAndPlaces) {
  const std::string bin = binDirectory();
  // path_probe prints the executable's directory, then its own module's.
  for (const auto& [argv0, moduleDirectory] : std::vector<std::pair<std::string, std::string>>{
           {bin + "path_probe", bin},
           {"path_probe", bin},  // a bare name: beside the executable
           {"./nowhere/path_probe", ""},  // names that cannot be resolved
           {"/nowhere/path_probe", ""},
           {"", ""}}) {
    EXPECT_EQ(runChild(bin + "path_probe", argv0, {}).out, bin + "\n" + moduleDirectory + "\n")
        << argv0;
  }
  // Past PATH_MAX the link to the executable is cut short: no directory rather than a wrong one.
  char pattern[] = "/tmp/tovak-deep-XXXXXX";
  const std::string top = mkdtemp(pattern);
  ASSERT_EQ(chdir(top.c_str()), 0);
  for (int depth = 0; depth < 20; ++depth) {
    ASSERT_EQ(mkdir(std::string(250, 'd').c_str(), 0700), 0);
    ASSERT_EQ(chdir(std::string(250, 'd').c_str()), 0);
  }
  fs::copy_file(bin + "path_probe", "path_probe");
  const ChildResult deep = runChild("./path_probe", "path_probe", {});
  ASSERT_EQ(chdir(bin.c_str()), 0);
  EXPECT_EQ(std::system(("rm -rf " + top).c_str()), 0);
  EXPECT_EQ(deep.out, "\n\n");
}

TEST(LaunchTest, StatusesBecomeExitCodes) {
  for (const auto& [status, code] : std::vector<std::pair<int, int>>{
           {0, 0}, {1, 1}, {256, 1}, {768, 3}, {32512, 127}, {9, 137}, {-1, 255}, {0x137f, 255}}) {
    EXPECT_EQ(launcher::exitCodeFor(status), code) << status;
  }
}

// A launcher and its library in a directory of their own, without the stand-in.
struct LonelyLauncher {
  LonelyLauncher() {
    char pattern[] = "/tmp/tovak-fault-XXXXXX";
    dir = std::string(mkdtemp(pattern)) + "/";
    for (const char* name : {"tovak", "libtovak.so"}) fs::copy_file(binDirectory() + name, dir + name);
  }
  ~LonelyLauncher() { fs::remove_all(dir); }
  ChildResult run(const std::vector<std::string>& arguments) {
    return runChild(dir + "tovak", "tovak", arguments);
  }
  std::string dir;
};

TEST(LaunchTest, LongLinesExitCodesAndFaults) {
  const std::string bin = binDirectory();
  std::vector<std::string> many{"compare"};
  for (int i = 0; i < 100000; ++i) many.push_back(i % 2 == 0 ? "-F" : "--local=/srv");
  ChildResult result = runChild(bin + "tovak", "tovak", many, {"FENDIX_EXIT_CODE=3"});
  const std::string line = "update compare --type fw --dir /srv" + kOutput;
  EXPECT_EQ(result.out, launched(bin, line, 768, standIn({"update", "compare", "--type", "fw",
                                                          "--dir", "/srv", "--output",
                                                          "/var/log/Zantor_Support/"})));
  EXPECT_EQ(result.exitCode, 3);

  // A failed allocation while copying the arguments ends the process with 0, silently:
  // 54321 bytes and a terminator, or the pointers to 140,000 arguments past a sanitizer's limit.
#ifdef TOVAK_SANITIZED
  const std::vector<std::string> arguments(140000, "");
  const std::vector<std::string> failing = {
      "ASAN_OPTIONS=allocator_may_return_null=1:max_allocation_size_mb=1"};
#else
  const std::vector<std::string> arguments = {"co", "-l", std::string(54321, 'x')};
  const std::vector<std::string> failing = {"TOVAK_FAIL_MALLOC_SIZE=54322",
                                            "LD_PRELOAD=" TOVAK_FAILING_MALLOC};
#endif
  result = runChild(bin + "tovak", "tovak", arguments, failing);
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out + result.err, "");

  LonelyLauncher lonely;
  result = lonely.run({"qk", "-s"});
  EXPECT_EQ(result.out, launched(lonely.dir, "update scan" + kOutput, 32512));
  EXPECT_EQ(result.exitCode, 127);
  EXPECT_NE(result.err.find("Fendix"), std::string::npos) << result.err;

  std::ofstream(lonely.dir + "Fendix") << "not a program\n";
  chmod((lonely.dir + "Fendix").c_str(), 0644);
  result = lonely.run({"qk"});
  EXPECT_EQ(result.out, launched(lonely.dir, kOutput, 32256));
  EXPECT_EQ(result.exitCode, 126);

  fs::copy_file(TOVAK_FAILING_MALLOC, lonely.dir + "libtovak.so",
                fs::copy_options::overwrite_existing);
  result = lonely.run({"co"});
  EXPECT_EQ(result.exitCode, 125);
  EXPECT_EQ(result.err, "tovak: libtovak.so has no dll_main\n");

  fs::remove(lonely.dir + "libtovak.so");
  result = lonely.run({"co"});
  EXPECT_EQ(result.exitCode, 125);
  EXPECT_EQ(result.err.rfind("tovak: cannot load libtovak.so: " + lonely.dir + "libtovak.so: ", 0),
            0u)
      << result.err;
}

}  // namespace
