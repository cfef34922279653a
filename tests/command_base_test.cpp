// The translation framework, through a translator derived the way a caller derives one.
#include "tovak/command_base.h"

#include <gtest/gtest.h>

#include "support.h"

namespace {

// Accepts -l/--local and --xml; its translation is one step chosen by the test.
class OneStepCommand : public CommandBase {
 public:
  using Step = bool (*)(CommandBase&);
  OneStepCommand(Parameters* parameters, Step step) : CommandBase(parameters), step_(step) {}
  void addSupportedParameters() override {
    supportedParameters.emplace_back("-l", "--local");
    supportedParameters.emplace_back("--xml", "");
  }
  bool translateParameters() override {
    addCommand("update x");
    return step_(*this);
  }

 private:
  Step step_;
};

struct Case {
  std::vector<std::string> tokens;
  OneStepCommand::Step step;
  std::string line;  // after a successful run; "" when run fails
  std::string printed;
};

bool withValue(CommandBase& c) { return c.translateHasValueParameter("-l", "--local", "--dir"); }
bool withoutValue(CommandBase& c) { return c.translateNoValueParameter("--xml", "", "--xml"); }
bool swapped(CommandBase& c) { return c.translateHasValueParameter("--local", "-l", "--dir"); }
bool badName(CommandBase& c) { return c.translateNoValueParameter("xml", "", "--xml"); }
bool fails(CommandBase&) { return false; }
bool appends(CommandBase& c) {
  c.addParameter("--a", "two words");
  c.addParameter("--b", "");
  c.addParameter("--c", "tab\there\"");
  c.addParameter("--noscan ");
  return true;
}

TEST(CommandBaseTest, RunsTheStagesInOrderAndClosesTheLine) {
  const std::vector<Case> cases = {
      {{}, appends, "update x --a \"two words\" --b  --c tab\there\" --noscan ", ""},
      {{"-l", "/srv"}, withValue, "update x --dir /srv", ""},
      {{"--local=/a b"}, swapped, "update x --dir \"/a b\"", ""},
      {{"--local"}, withValue, "", "The parameter value of -l or --local can not be empty. \n"},
      {{"-l", "--xml"}, swapped, "", "The parameter value of --local or -l can not be empty. \n"},
      {{"--xml="}, withoutValue, "update x --xml", ""},
      {{"--xml=1"}, withoutValue, "", "The parameter --xml can not carry value. \n"},
      {{"--xml"}, badName, "update x", " The parameter should start with dash!\n"},
      {{"--nope"}, appends, "", "The parameter: --nope is not supported!"},
      {{"-l", "a", "--local=b"},
       appends,
       "",
       "Can not set \"-l\" and \"--local\" at the same time.\n"},
      {{}, fails, "", ""},
  };
  for (const Case& c : cases) {
    ArgumentVector vector([&] {
      std::vector<std::string> all{"tovak", "word"};
      all.insert(all.end(), c.tokens.begin(), c.tokens.end());
      return all;
    }());
    Parameters parameters(vector.argc(), vector.argv());
    OneStepCommand command(&parameters, c.step);
    StdoutCapture capture;
    EXPECT_EQ(command.run(), !c.line.empty());
    if (!c.line.empty()) {
      EXPECT_EQ(command.getCommandLine(), c.line + kOutputOption);
    }
    EXPECT_EQ(capture.text(), c.printed) << ::testing::PrintToString(c.tokens);
  }
}

}  // namespace
