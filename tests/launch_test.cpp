// The launch: exec and the path functions in-process, then build/bin/tovak as a child
// process against the stand-in Fendix, its whole standard output compared byte for byte,
// and the faults the shell reports.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "exit_code.h"
#include "support.h"
#include "tovak/entry.h"
#include "tovak/process_path.h"

namespace fs = std::filesystem;

namespace {

// What exec prints around a run, with the stand-in's report of the arguments it received.
std::string launched(const std::string& dir, const std::string& line, int status,
                     const std::vector<std::string>& received = {}) {
  std::string text = "The translated command is: \n" + dir + "./Fendix " + line + "\n";
  if (!received.empty()) {
    text += "Fendix stand-in received " + std::to_string(received.size()) + " arguments\n";
    for (std::size_t i = 0; i < received.size(); ++i) {
      text += "  [" + std::to_string(i + 1) + "] <" + received[i] + ">\n";
    }
  }
  return text + "The fendx return code is: " + std::to_string(status) + "\n";
}

TEST(LaunchTest, PathsAndAnEmptyCommandLine) {
  const std::string bin = binDirectory();
  EXPECT_EQ(GetCurProcessPath(), bin);
  EXPECT_EQ(GetSysTempPath(), "/tmp/");
  EXPECT_EQ(GetModulePathLin(reinterpret_cast<void*>(&binDirectory)), bin);
  EXPECT_NE(GetModulePathLin(reinterpret_cast<void*>(&::getenv)), "");
  EXPECT_EQ(GetModulePathLin(nullptr), "");
  StdoutCapture capture;  // the stand-in itself writes past it, to the real output
  EXPECT_EQ(exec(""), 0);  // no arguments at all: the command ends in "Fendix "
  EXPECT_EQ(capture.text(), launched(bin, "", 0));
}

TEST(LaunchTest, LauncherRunsLegacyLinesThroughFendix) {
  const std::string bin = binDirectory();
  const std::string out = " --output /var/log/Zantor_Support/";
  const std::vector<std::string> outArgs = {"--output", "/var/log/Zantor_Support/"};
  std::vector<std::string> many{"compare"};
  for (int i = 0; i < 100000; ++i) many.push_back(i % 2 == 0 ? "-F" : "--local=/srv");
  const std::string ids(100000, '7');  // two of them exceed the shell's argument limit
  struct Case {
    std::vector<std::string> arguments;
    std::string exitCodeVariable, out;
    int exitCode;
  };
  const std::vector<Case> cases = {
      {{"compare", "-F", "-l", "/srv/repo", "-L"},
       "",
       "\n" + launched(bin, "update compare --type fw --dir /srv/repo --scope latest" + out, 0,
                       {"update", "compare", "--type", "fw", "--dir", "/srv/repo", "--scope",
                        "latest", outArgs[0], outArgs[1]}),
       0},
      {{"up", "--local=/my repo"},
       "3",
       launched(bin, "update flash --dir \"/my repo\"" + out, 768,
                {"update", "flash", "--dir", "/my repo", outArgs[0], outArgs[1]}),
       3},
      {many, "",
       launched(bin, "update compare --type fw --dir /srv" + out, 0,
                {"update", "compare", "--type", "fw", "--dir", "/srv", outArgs[0], outArgs[1]}),
       0},
      {{"co", "-f", ids, "-o", ids},
       "",
       launched(bin, "update compare --forceid " + ids + " --forceid " + ids + out, 32512),
       127},
      {{}, "", "Please specify the command!\n", 1},
      {{"co", "--noinventory"}, "", "The parameter: --noinventory is not supported!", 1},
  };
  for (const Case& c : cases) {
    setenv("FENDIX_EXIT_CODE", c.exitCodeVariable.c_str(), 1);
    const ChildResult result = runChild(bin + "tovak", c.arguments);
    unsetenv("FENDIX_EXIT_CODE");
    EXPECT_EQ(result.out, c.out) << c.arguments.size() << " arguments";
    EXPECT_EQ(result.exitCode, c.exitCode);
    EXPECT_EQ(result.err, "");
  }
}

TEST(LaunchTest, StatusesBecomeExitCodes) {
  for (const auto& [status, code] : std::vector<std::pair<int, int>>{
           {0, 0}, {1, 1}, {256, 1}, {768, 3}, {32512, 127}, {9, 137}, {-1, 255}}) {
    EXPECT_EQ(launcher::exitCodeFor(status), code) << status;
  }
}

#ifdef TOVAK_FAILING_MALLOC
// A launcher and its library in a directory of their own, without the stand-in.
struct LonelyLauncher {
  LonelyLauncher() {
    char pattern[] = "/tmp/tovak-fault-XXXXXX";
    dir = std::string(mkdtemp(pattern)) + "/";
    for (const char* name : {"tovak", "libtovak.so"})
      fs::copy_file(binDirectory() + name, dir + name);
  }
  ~LonelyLauncher() { fs::remove_all(dir); }
  std::string dir;
};

TEST(LaunchTest, FaultsPassTheShellsStatusThrough) {
  // A failed allocation of an argument copy (54321 bytes and its terminator) ends the
  // process with 0 and prints nothing.
  setenv("TOVAK_FAIL_MALLOC_SIZE", "54322", 1);
  setenv("LD_PRELOAD", TOVAK_FAILING_MALLOC, 1);
  ChildResult result = runChild(binDirectory() + "tovak", {"co", "-l", std::string(54321, 'x')});
  unsetenv("LD_PRELOAD");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out + result.err, "");

  LonelyLauncher lonely;
  result = runChild(lonely.dir + "tovak", {"qk", "-s"});
  EXPECT_EQ(result.out,
            launched(lonely.dir, "update scan --output /var/log/Zantor_Support/", 32512));
  EXPECT_EQ(result.exitCode, 127);
  EXPECT_NE(result.err.find("Fendix"), std::string::npos) << result.err;

  std::ofstream(lonely.dir + "Fendix") << "not a program\n";
  chmod((lonely.dir + "Fendix").c_str(), 0644);
  result = runChild(lonely.dir + "tovak", {"qk"});
  EXPECT_EQ(result.out, launched(lonely.dir, " --output /var/log/Zantor_Support/", 32256));
  EXPECT_EQ(result.exitCode, 126);

  fs::remove(lonely.dir + "libtovak.so");
  result = runChild(lonely.dir + "tovak", {"co"});
  EXPECT_EQ(result.exitCode, 125);
  EXPECT_EQ(result.err.rfind("tovak: cannot load libtovak.so: ", 0), 0u) << result.err;
}
#endif

}  // namespace
