// Legacy lines through dll_main's translation, short of launching: the dispatch on the
// command word and the three translators, as one table of lines, Fendix lines and messages.
#include "entry/translation.h"

#include <gtest/gtest.h>

#include "support.h"
#include "tovak/compare_update_command.h"
#include "tovak/entry.h"

namespace {

std::string carry(const std::string& names) {
  return "The parameter " + names + " can not carry value. \n";
}
std::string empty(const std::string& names) {
  return "The parameter value of " + names + " can not be empty. \n";
}
const std::string kSelect =
    "Warning: The parameter -s or --select is not supported by fendix. It will be ignored!\n";

struct Case {
  std::vector<std::string> words;
  std::string line;  // without the closing output option; "-" when refused
  std::string printed;
};

void expectTranslations(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    const Outcome outcome = translateLine(c.words);
    EXPECT_EQ(outcome.line, c.line == "-" ? "" : c.line + kOutputOption)
        << ::testing::PrintToString(c.words);
    EXPECT_EQ(outcome.printed, c.printed) << ::testing::PrintToString(c.words);
  }
}

TEST(TranslationTest, DispatchesOnTheExactCommandWordAfterTheShapeCheck) {
  // clang-format off
  expectTranslations({
      {{"ac"}, "update acquire", ""}, {{"co"}, "update compare", ""},
      {{"up"}, "update flash", ""}, {{"qk"}, "", ""},
      {{""}, "-", "Please specify the command!\n"},
      {{"ac "}, "-", "The command: ac  is not supported.\n"},
      {{"-m", "-x"}, "-", "The command: -m is not supported.\n"},
      {{"Update", "v"}, "-",
       "The command parameters are not vaild!\nThe first paramater should start with - or --.\n"},
  });
  // clang-format on
}

TEST(TranslationTest, CompareAndUpdate) {
  // clang-format off
  expectTranslations({
      {{"compare", "-F", "-l", "/srv/repo", "-L"},
       "update compare --type fw --dir /srv/repo --scope latest", "\n"},
      {{"update", "-D", "-F", "--firmware", "-o", "B", "--force=A", "--local=/my repo"},
       "update flash --type fw --type dd --forceid A --forceid B --dir \"/my repo\"", ""},
      {{"co", "-s", "x", "-u", "y", "-e", "all", "-L", "v"}, "update compare --scope individual",
       kSelect},
      {{"co", "-e", "ALL", "-L", "-i", "9"}, "update compare --excludeid  ALL --scope latest --includeid  9",
       "\n"},
      {{"up", "--xml", "-m", "7X", "--vmware-esxi=e", "--noinventory"},
       "update flash --noscan  --esxi e --mt 7X --xml", ""},
      {{"co", "--host=h", "--update-args=--user=u,--password=p --backup"},
       "update compare --vek u:p@h --backup", ""},
      {{"co", "--host=h", "--update-args=--user=u --password="}, "update compare --vek h", ""},
      {{"co", "--update-args=--user=u --password=p --backups", "--host"}, "update compare --backup", ""},
      {{"co", "-F", "x"}, "-", carry("-F or --firmware")},
      {{"co", "-L", "v"}, "-", "v\n" + carry("-L or --latest")},
      {{"co", "-e"}, "-", empty("-e or --exclude")},
      {{"co", "--vmware-esxi"}, "-", empty("--vmware-esxi")},
      {{"up", "--noinventory=1"}, "-", carry("--noinventory")},
      {{"co", "--noinventory"}, "-", "The parameter: --noinventory is not supported!"},
      {{"co", "-l=/srv"}, "-", "The parameter: -l=/srv is not supported!"},
  });
  // clang-format on
}

TEST(TranslationTest, Acquire) {
  // clang-format off
  expectTranslations({
      {{"acquire", "-l", "/srv", "-m", "7X", "--os=rhel"}, "update acquire --dir /srv --mt 7X --ostype rhel", ""},
      {{"ac", "-i", "A", "-m", "-o", "-L"}, "update acquire --scope individual --includeid A", ""},
      {{"ac", "--ignore-req", "--xml", "-r", "-L", "--meta-only=", "--no-proxy=x"},
       "update acquire --metaonly --scope latest --report --xml --noreq", ""},
      {{"ac", "--proxy-address=p", "--proxy-user=u", "--proxy-password=s", "--proxy-port=8"},
       "update acquire --proxy u:s@p:8", ""},
      {{"ac", "--proxy-address", "--proxy-password=a b"}, "update acquire --proxy \":a b@:\"", ""},
      {{"ac", "-l", "-L"}, "-", empty("-l or --local")},
      {{"ac", "-i", "A", "--latest=1"}, "-", carry("-L or --latest")},
      {{"ac", "-i"}, "-", empty("-i or --id")},
      {{"ac", "--os"}, "-", empty("-o or --os")},
      {{"ac", "--meta-only=1"}, "-", carry("--meta-only")},
      {{"ac", "--proxy-port=8"}, "-", "The parameter: --proxy-address need specify. \n"},
      {{"ac", "-u", "a", "--unattended=b"}, "-",
       "Can not set \"-u\" and \"--unattended\" at the same time.\n"},
  });
  // clang-format on
}

TEST(TranslationTest, Quenmark) {
  // clang-format off
  expectTranslations({
      {{"quenmark", "-s", "word"}, "update scan", ""},
      {{"qk", "--scan=x", "--vq-address=10.1.1.1", "--vq-user=U", "--vq-password=P"},
       "update scan --zul U:P@10.1.1.1", ""},
      {{"qk", "--vq-address=a", "--vq-password=p w"}, " --zul \":p w@a\"", ""},
      {{"qk", "-s", "--vq-user=u"}, "-", "The parameter: --vq-address need specify. \n"},
  });
  // clang-format on
}

TEST(TranslationTest, MatchValueEndsAtTheFirstBlankOrComma) {
  ArgumentVector vector({"tovak", "co"});
  Parameters parameters(vector.argc(), vector.argv());
  CompareUpdateCommand command(&parameters, "compare");
  for (const auto& [value, match] : std::vector<std::pair<std::string, std::string>>{
           {"x--user=a,b c", "a"}, {"--user=a b,c", "a"}, {"--user=", ""}, {"none", ""}}) {
    EXPECT_EQ(command.getMatchValueFromString(value, "--user="), match) << value;
  }
}

TEST(TranslationTest, CallerArgumentsAreBlankedInPlaceWhateverTheOutcome) {
  for (const std::vector<std::string>& line : std::vector<std::vector<std::string>>{
           {"/opt/t/tovak", "co", "-F", "x"}, {"/opt/t/tovak", "", "", "-x"}, {"/opt/t/tovak"}}) {
    ArgumentVector vector(line);
    StdoutCapture capture;
    EXPECT_EQ(dll_main(vector.argc(), vector.argv()), tovak::kRejected);
    EXPECT_STREQ(vector.argv()[0], "/opt/t/tovak");
    for (std::size_t i = 1; i < line.size(); ++i) {
      EXPECT_EQ(vector.argv()[i], std::string(line[i].size(), ' '));
    }
  }
  StdoutCapture capture;
  EXPECT_EQ(dll_main(0, nullptr), tovak::kRejected);
  EXPECT_EQ(capture.text(), "Please specify the command!\n");
}

}  // namespace
