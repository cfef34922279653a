// End to end: build/bin/tovak as a child process against the stand-in Fendix, its whole
// standard output compared byte for byte, and its exit code.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <string>
#include <vector>

#include "exit_code.h"
#include "support/child_process.h"

namespace {

std::string binPath() {
  char resolved[4096];
  return std::string(realpath(binDirectory().c_str(), resolved)) + "/";
}

// What exec prints around a run of the stand-in, for a Fendix line and its arguments.
std::string launched(const std::string& line, const std::vector<std::string>& received,
                     int status = 0) {
  std::string text = "The translated command is: \n" + binPath() + "./Fendix " + line + "\n";
  text += "Fendix stand-in received " + std::to_string(received.size()) + " arguments\n";
  for (std::size_t i = 0; i < received.size(); ++i) {
    text += "  [" + std::to_string(i + 1) + "] <" + received[i] + ">\n";
  }
  return text + "The fendx return code is: " + std::to_string(status) + "\n";
}

const std::vector<std::string> kOutputArgs = {"--output", "/var/log/Zantor_Support/"};

std::vector<std::string> with(std::vector<std::string> args) {
  args.insert(args.end(), kOutputArgs.begin(), kOutputArgs.end());
  return args;
}

TEST(LauncherTest, RunsLegacyLinesThroughFendix) {
  struct Case {
    std::vector<std::string> arguments;
    std::vector<std::string> environment;
    std::string out;
    int exitCode;
  };
  const std::vector<Case> cases = {
      {{"compare", "-F", "-l", "/srv/repo", "-L"},
       {},
       "\n" + launched("update compare --type fw --dir /srv/repo --scope latest --output "
                       "/var/log/Zantor_Support/",
                       with({"update", "compare", "--type", "fw", "--dir", "/srv/repo",
                             "--scope", "latest"})),
       0},
      {{"up", "--noinventory", "--local=/my repo"},
       {"FENDIX_EXIT_CODE=3"},
       launched("update flash --dir \"/my repo\" --noscan  --output /var/log/Zantor_Support/",
                with({"update", "flash", "--dir", "/my repo", "--noscan"}), 768),
       3},
      {{"ac", "--proxy-address=p", "--proxy-user=u"},
       {},
       launched("update acquire --proxy u:@p: --output /var/log/Zantor_Support/",
                with({"update", "acquire", "--proxy", "u:@p:"})),
       0},
      {{"qk", "--vq-address=10.1.1.1"},
       {},
       launched(" --zul :@10.1.1.1 --output /var/log/Zantor_Support/",
                with({"--zul", ":@10.1.1.1"})),
       0},
      {{"qk", "-s"}, {"FENDIX_EXIT_CODE=1"},
       launched("update scan --output /var/log/Zantor_Support/",
                with({"update", "scan"}), 256),
       1},
      {{}, {}, "Please specify the command!\n", 1},
      {{"Update"}, {}, "The command: Update is not supported.\n", 1},
      {{"co", "--noinventory"}, {}, "The parameter: --noinventory is not supported!", 1},
      {{"co", "-x", "a", "b"},
       {},
       "The command parameters are not vaild!\nIf the parameter starts with -, at least one of "
       "the next two parameters should start with - or --.\n",
       1},
      {{"ac", "--proxy-port=8"}, {}, "The parameter: --proxy-address need specify. \n", 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.arguments));
    const ChildResult result = runChild(binPath() + "tovak", c.arguments, c.environment);
    EXPECT_EQ(result.out, c.out);
    EXPECT_EQ(result.exitCode, c.exitCode);
    EXPECT_EQ(result.err, "");
  }
}

TEST(LauncherTest, CarriesOneHundredThousandTokens) {
  std::vector<std::string> arguments{"compare"};
  for (int i = 0; i < 50000; ++i) {
    arguments.push_back(i % 2 == 0 ? "-F" : "-D");
    arguments.push_back("--local=/srv/repo");
  }
  const ChildResult result = runChild(binPath() + "tovak", arguments);
  EXPECT_EQ(result.out, launched("update compare --type fw --type dd --dir /srv/repo --output "
                                 "/var/log/Zantor_Support/",
                                 with({"update", "compare", "--type", "fw", "--type", "dd",
                                       "--dir", "/srv/repo"})));
  EXPECT_EQ(result.exitCode, 0);
}

TEST(LauncherTest, LineBeyondTheKernelsArgumentLimitGetsTheShellsStatus) {
  // Each value fits in one argument of the launcher; the translated line holds both and is
  // longer than the kernel takes for the shell's one command argument.
  const std::string ids(100000, '7');
  const ChildResult result = runChild(binPath() + "tovak", {"co", "-f", ids, "-o", ids});
  const std::string line = "update compare --forceid " + ids + " --forceid " + ids +
                           " --output /var/log/Zantor_Support/";
  EXPECT_EQ(result.out, "The translated command is: \n" + binPath() + "./Fendix " + line +
                            "\nThe fendx return code is: 32512\n");
  EXPECT_EQ(result.exitCode, 127);
}

TEST(LauncherTest, MapsStatusesToExitCodes) {
  struct Case {
    int status, exitCode;
  };
  const std::vector<Case> cases = {
      {0, 0},     {1, 1},         {256, 1},   {768, 3},
      {32512, 127}, {9, 128 + 9}, {15, 143},  {-1, launcher::kUnknownStatus},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(launcher::exitCodeFor(c.status), c.exitCode) << c.status;
  }
}

}  // namespace
