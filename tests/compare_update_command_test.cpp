// The compare and update translator, as a table of legacy lines and Fendix lines.
#include "tovak/compare_update_command.h"

#include <gtest/gtest.h>

#include "support/legacy_line.h"
#include "translator_cases.h"

namespace {

const std::string kSelectWarning =
    "Warning: The parameter -s or --select is not supported by fendix. It will be ignored!\n";

TEST(CompareUpdateCommandTest, TranslatesEachOption) {
  expectTranslations({
      {{"compare", "-F", "-l", "/srv/repo", "-L"},
       "update compare --type fw --dir /srv/repo --scope latest", "\n"},
      {{"update", "-F", "-l", "/srv/repo", "-L"},
       "update flash --type fw --dir /srv/repo --scope latest", "\n"},
      {{"co"}, "update compare", ""},
      {{"up"}, "update flash", ""},
      {{"co", "-D", "-F"}, "update compare --type fw --type dd", ""},
      {{"co", "-F", "--firmware", "-F"}, "update compare --type fw", ""},
      {{"co", "--firmware="}, "update compare --type fw", ""},
      {{"co", "-f", "A1", "-o", "B2"}, "update compare --forceid A1 --forceid B2", ""},
      {{"co", "-o", "B2", "--force=A1"}, "update compare --forceid A1 --forceid B2", ""},
      {{"co", "--local=/my repo"}, "update compare --dir \"/my repo\"", ""},
      {{"co", "-s", "x", "-u", "y"}, "update compare", kSelectWarning},
      {{"co", "-e", "all", "-L", "v"}, "update compare --scope individual", ""},
      {{"co", "--exclude=all", "-L"}, "update compare --scope individual", ""},
      {{"co", "-e", "ALL"}, "update compare --excludeid  ALL", ""},
      {{"co", "-e", "1,2", "-L"}, "update compare --excludeid  1,2 --scope latest", "\n"},
      {{"co", "-i", "9", "-m", "7X21"}, "update compare --includeid  9 --mt 7X21", ""},
      {{"up", "--noinventory"}, "update flash --noscan ", ""},
      {{"up", "--noinventory", "--xml"}, "update flash --noscan  --xml", ""},
      {{"co", "--vmware-esxi=host1"}, "update compare --esxi host1", ""},
      {{"co", "--machine-type=7X21", "--xml"}, "update compare --mt 7X21 --xml", ""},
      // Order follows the translation, not the legacy line.
      {{"up", "--xml", "-m", "7X", "--noinventory", "-i", "5", "-e", "4", "-l", "/d", "-o", "3",
        "-f", "2", "-D", "-F"},
       "update flash --type fw --type dd --forceid 2 --forceid 3 --dir /d --excludeid  4 "
       "--includeid  5 --noscan  --mt 7X --xml",
       ""},
  });
}

TEST(CompareUpdateCommandTest, BuildsTheRemoteTarget) {
  expectTranslations({
      {{"co", "--host=10.0.0.5"}, "update compare --vek 10.0.0.5", ""},
      {{"co", "--host=h", "--update-args=--user=admin --password=pw"},
       "update compare --vek admin:pw@h", ""},
      {{"co", "--host=h", "--update-args=--user=admin,--password=pw,--backup"},
       "update compare --vek admin:pw@h --backup", ""},
      {{"co", "--host=h", "--update-args=--user=admin --password="}, "update compare --vek h", ""},
      {{"co", "--host=h", "--update-args=--password=pw"}, "update compare --vek h", ""},
      {{"co", "--update-args=--user=a --password=b --backups"}, "update compare --backup", ""},
      {{"co", "--host", "--update-args"}, "update compare", ""},
      {{"co", "--host=my host"}, "update compare --vek \"my host\"", ""},
  });
}

TEST(CompareUpdateCommandTest, RefusesBadValuesAndOptions) {
  expectTranslations({
      {{"co", "-F", "x"}, std::nullopt, carryValueLine("-F or --firmware")},
      {{"co", "--drivers=x"}, std::nullopt, carryValueLine("-D or --drivers")},
      {{"co", "-L", "v"}, std::nullopt, "v\n" + carryValueLine("-L or --latest")},
      {{"co", "-e"}, std::nullopt, emptyValueLine("-e or --exclude")},
      {{"co", "-f", "-F"}, std::nullopt, emptyValueLine("-f or --force")},
      {{"co", "--linuxoverride"}, std::nullopt, emptyValueLine("-o or --linuxoverride")},
      {{"co", "-l"}, std::nullopt, emptyValueLine("-l or --local")},
      {{"co", "-i"}, std::nullopt, emptyValueLine("-i or --include")},
      {{"co", "-m"}, std::nullopt, emptyValueLine("-m or --machine-type")},
      {{"co", "--vmware-esxi"}, std::nullopt, emptyValueLine("--vmware-esxi")},
      {{"up", "--noinventory=1"}, std::nullopt, carryValueLine("--noinventory")},
      {{"co", "--xml=1"}, std::nullopt, carryValueLine("--xml")},
      {{"co", "--noinventory"}, std::nullopt, "The parameter: --noinventory is not supported!"},
      {{"co", "-l=/srv"}, std::nullopt, "The parameter: -l=/srv is not supported!"},
      {{"co", "-l", "/a", "--local=/b"}, std::nullopt,
       "Can not set \"-l\" and \"--local\" at the same time.\n"},
      {{"co", "-s", "-L", "x"}, std::nullopt, kSelectWarning + "x\n" + carryValueLine("-L or --latest")},
  });
}

TEST(CompareUpdateCommandTest, MatchValueStopsAtBlankThenComma) {
  struct Case {
    std::string value, key, match;
  };
  const std::vector<Case> cases = {
      {"--user=admin", "--user=", "admin"},  {"x --user=admin --y", "--user=", "admin"},
      {"--user=a,b c", "--user=", "a"},      {"--user=a b,c", "--user=", "a"},
      {"no key", "--user=", ""},             {"--user=", "--user=", ""},
      {"a--user=b", "--user=", "b"},         {"--user=a --user=b", "--user=", "a"},
  };
  ArgumentVector vector({"tovak", "co"});
  Parameters parameters(vector.argc(), vector.argv());
  CompareUpdateCommand command(&parameters, "compare");
  for (const Case& c : cases) {
    EXPECT_EQ(command.getMatchValueFromString(c.value, c.key), c.match) << c.value;
  }
}

}  // namespace
