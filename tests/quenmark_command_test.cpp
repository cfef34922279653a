// The chassis translator, as a table of legacy lines and Fendix lines.
#include "tovak/quenmark_command.h"

#include <gtest/gtest.h>

#include "translator_cases.h"

namespace {

const std::string kNeedAddress = "The parameter: --vq-address need specify. \n";

TEST(QuenmarkCommandTest, TranslatesScanAndManagementModule) {
  expectTranslations({
      {{"quenmark", "-s"}, "update scan", ""},
      {{"qk", "-s", "word"}, "update scan", ""},
      {{"qk", "--scan=x"}, "update scan", ""},
      {{"qk", "-s", "--vq-address=10.1.1.1", "--vq-user=USERID", "--vq-password=PASSW0RD"},
       "update scan --zul USERID:PASSW0RD@10.1.1.1", ""},
      {{"qk", "-s", "--vq-address=a"}, "update scan --zul :@a", ""},
      {{"qk", "-s", "--vq-address=a", "--vq-user=u"}, "update scan --zul u:@a", ""},
      {{"qk", "-s", "--vq-address=a", "--vq-password=p"}, "update scan --zul :p@a", ""},
      {{"qk", "-s", "--vq-address", "--vq-user=u"}, "update scan --zul u:@", ""},
      {{"qk", "--vq-address=a", "--vq-password=p w"}, " --zul \":p w@a\"", ""},
      {{"qk"}, "", ""},
  });
}

TEST(QuenmarkCommandTest, RefusesCredentialsWithoutAddress) {
  expectTranslations({
      {{"qk", "-s", "--vq-user=u"}, std::nullopt, kNeedAddress},
      {{"qk", "--vq-password=p"}, std::nullopt, kNeedAddress},
      {{"qk", "-s", "a", "--scan=b"}, std::nullopt,
       "Can not set \"-s\" and \"--scan\" at the same time.\n"},
      {{"qk", "-l"}, std::nullopt, "The parameter: -l is not supported!"},
  });
}

}  // namespace
