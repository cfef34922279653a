// The acquire translator, as a table of legacy lines and Fendix lines.
#include "tovak/acquire_command.h"

#include <gtest/gtest.h>

#include "translator_cases.h"

namespace {

const std::string kNeedAddress = "The parameter: --proxy-address need specify. \n";

TEST(AcquireCommandTest, TranslatesEachOption) {
  expectTranslations({
      {{"acquire"}, "update acquire", ""},
      {{"ac", "-l", "/srv"}, "update acquire --dir /srv", ""},
      {{"ac", "--local=/my dir"}, "update acquire --dir \"/my dir\"", ""},
      {{"ac", "-m", "7X21", "-o", "rhel8"}, "update acquire --mt 7X21 --ostype rhel8", ""},
      {{"ac", "-i", "A,B", "-m", "7X", "--os=win", "-L"},
       "update acquire --scope individual --includeid A,B", ""},
      {{"ac", "-i", "A", "-m", "-o"}, "update acquire --scope individual --includeid A", ""},
      {{"ac", "-L", "--latest"}, "update acquire --scope latest", ""},
      {{"ac", "--latest="}, "update acquire --scope latest", ""},
      {{"ac", "--meta-only=", "--xml=", "--ignore-req="},
       "update acquire --metaonly --xml --noreq", ""},
      {{"ac", "-r", "--report"}, "update acquire --report", ""},
      {{"ac", "--no-proxy=x", "-u", "v"}, "update acquire", ""},
      // Order follows the translation, not the legacy line.
      {{"ac", "--ignore-req", "--xml", "-r", "-L", "--meta-only", "-o", "w", "-m", "t", "-l",
        "/d"},
       "update acquire --dir /d --mt t --ostype w --metaonly --scope latest --report --xml "
       "--noreq",
       ""},
  });
}

TEST(AcquireCommandTest, JoinsProxyPartsWithAllSeparators) {
  expectTranslations({
      {{"ac", "--proxy-address=p", "--proxy-user=u", "--proxy-password=s", "--proxy-port=8"},
       "update acquire --proxy u:s@p:8", ""},
      {{"ac", "--proxy-address=p", "--proxy-port=8"}, "update acquire --proxy :@p:8", ""},
      {{"ac", "--proxy-address=p", "--proxy-user=u"}, "update acquire --proxy u:@p:", ""},
      {{"ac", "--proxy-address=p", "--proxy-password=s"}, "update acquire --proxy :s@p:", ""},
      {{"ac", "--proxy-address=p"}, "update acquire --proxy :@p:", ""},
      {{"ac", "--proxy-address", "--proxy-user=u"}, "update acquire --proxy u:@:", ""},
      {{"ac", "--proxy-address=p", "--proxy-password=a b"},
       "update acquire --proxy \":a b@p:\"", ""},
      {{"ac", "--no-proxy", "--proxy-address=p"}, "update acquire --proxy :@p:", ""},
  });
}

TEST(AcquireCommandTest, RefusesBadValuesAndOptions) {
  expectTranslations({
      {{"ac", "-l"}, std::nullopt, emptyValueLine("-l or --local")},
      {{"ac", "--local"}, std::nullopt, emptyValueLine("-l or --local")},
      {{"ac", "-l", "-L"}, std::nullopt, emptyValueLine("-l or --local")},
      {{"ac", "-m"}, std::nullopt, emptyValueLine("-m or --machine-type")},
      {{"ac", "--os="}, std::nullopt, emptyValueLine("-o or --os")},
      {{"ac", "--meta-only=1"}, std::nullopt, carryValueLine("--meta-only")},
      {{"ac", "-L", "x"}, std::nullopt, carryValueLine("-L or --latest")},
      {{"ac", "-i", "A", "--latest=1"}, std::nullopt, carryValueLine("-L or --latest")},
      {{"ac", "-i"}, std::nullopt, emptyValueLine("-i or --id")},
      {{"ac", "-r", "x"}, std::nullopt, carryValueLine("-r or --report")},
      {{"ac", "--xml=1"}, std::nullopt, carryValueLine("--xml")},
      {{"ac", "--ignore-req=1"}, std::nullopt, carryValueLine("--ignore-req")},
      {{"ac", "--proxy-user=u"}, std::nullopt, kNeedAddress},
      {{"ac", "--proxy-port=8"}, std::nullopt, kNeedAddress},
      {{"ac", "--proxy-password"}, std::nullopt, kNeedAddress},
      {{"ac", "-l=/srv"}, std::nullopt, "The parameter: -l=/srv is not supported!"},
      {{"ac", "-u", "a", "--unattended=b"}, std::nullopt,
       "Can not set \"-u\" and \"--unattended\" at the same time.\n"},
  });
}

}  // namespace
