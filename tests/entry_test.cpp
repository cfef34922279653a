// dll_main's own work: the dispatch on the command word, the order of the checks, and the
// blanking of the caller's argument strings.
#include "tovak/entry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "entry/translation.h"
#include "support/capture.h"
#include "support/legacy_line.h"
#include "tovak/parameters.h"

namespace {

const std::string kNotValid = "The command parameters are not vaild!\n";

TEST(EntryTest, DispatchesOnTheExactCommandWord) {
  struct Case {
    std::vector<std::string> words;
    std::string line;  // empty: refused
    std::string printed;
  };
  const std::vector<Case> cases = {
      {{"acquire"}, "update acquire", ""},
      {{"ac"}, "update acquire", ""},
      {{"compare"}, "update compare", ""},
      {{"co"}, "update compare", ""},
      {{"update"}, "update flash", ""},
      {{"up"}, "update flash", ""},
      {{"quenmark", "-s"}, "update scan", ""},
      {{"qk", "-s"}, "update scan", ""},
      {{}, "", "Please specify the command!\n"},
      {{""}, "", "Please specify the command!\n"},
      {{"Update"}, "", "The command: Update is not supported.\n"},
      {{"ac "}, "", "The command: ac  is not supported.\n"},
      {{"-m", "-x"}, "", "The command: -m is not supported.\n"},
      // The shape is checked before the word is looked at.
      {{"bogus", "value"}, "",
       kNotValid + "The first paramater should start with - or --.\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.words));
    const TranslationOutcome outcome = translateLine(c.words);
    EXPECT_EQ(outcome.accepted, !c.line.empty());
    EXPECT_EQ(outcome.commandLine, c.line.empty() ? "" : c.line + kOutputOption);
    EXPECT_EQ(outcome.printed, c.printed);
  }
}

TEST(EntryTest, NoArgumentsAtAllAskForACommand) {
  StdoutCapture capture;
  EXPECT_EQ(dll_main(0, nullptr), 1);
  char program[] = "tovak";
  char* only[] = {program, nullptr};
  EXPECT_EQ(dll_main(1, only), 1);
  EXPECT_EQ(capture.text(), "Please specify the command!\nPlease specify the command!\n");
  EXPECT_STREQ(program, "tovak");
}

TEST(EntryTest, CallerArgumentsAreBlankedInPlaceWhateverTheOutcome) {
  const std::vector<std::vector<std::string>> lines = {
      {"/opt/t/tovak", "co", "-l", "/srv/repo", "--host=h", "--update-args=--password=pw"},
      {"/opt/t/tovak", "co", "--bogus"},
      {"/opt/t/tovak", "nothing", "value"},
      {"/opt/t/tovak", "", "", "-x"},
  };
  for (const auto& line : lines) {
    SCOPED_TRACE(::testing::PrintToString(line));
    ArgumentVector vector(line);
    std::vector<char*> pointers(vector.argv(), vector.argv() + vector.argc());
    // Copy the translation the library makes from the same line, for comparison.
    const TranslationOutcome expected =
        translateLine(std::vector<std::string>(line.begin() + 1, line.end()));
    StdoutCapture capture;
    tovak::Translation translation = tovak::translateArguments(vector.argc(), vector.argv());
    EXPECT_EQ(translation.commandLine, expected.commandLine);
    EXPECT_STREQ(vector.argv()[0], "/opt/t/tovak");
    for (int i = 1; i < vector.argc(); ++i) {
      EXPECT_EQ(vector.argv()[i], pointers[static_cast<std::size_t>(i)]) << "moved " << i;
      EXPECT_EQ(std::string(vector.argv()[i]), std::string(line[static_cast<std::size_t>(i)].size(), ' '));
    }
  }
}

TEST(EntryTest, RefusedLinesReturnOneFromDllMain) {
  ArgumentVector vector({"tovak", "co", "-F", "x"});
  StdoutCapture capture;
  EXPECT_EQ(dll_main(vector.argc(), vector.argv()), tovak::kRejected);
  EXPECT_EQ(capture.text(), "The parameter -F or --firmware can not carry value. \n");
  EXPECT_STREQ(vector.argv()[3], " ");
}

TEST(EntryTest, LongVectorsAreCopiedWhole) {
  std::vector<std::string> words{"co"};
  for (int i = 0; i < 50000; ++i) {
    words.push_back("-F");
    words.push_back("--local=/srv");
  }
  words.push_back("-m");
  words.push_back("7X21");
  const TranslationOutcome outcome = translateLine(words);
  EXPECT_EQ(outcome.commandLine, "update compare --type fw --dir /srv --mt 7X21" + kOutputOption);
}

}  // namespace
