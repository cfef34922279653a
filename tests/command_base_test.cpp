// The translation framework, exercised through a translator derived the way a caller would
// derive one: the fixed run sequence, the appending operations and the one-option steps.
#include "tovak/command_base.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/capture.h"
#include "support/legacy_line.h"

namespace {

class ScriptedCommand : public CommandBase {
 public:
  ScriptedCommand(Parameters* parameters, SupportedParameterTable rows,
                  std::function<bool(ScriptedCommand&)> script)
      : CommandBase(parameters), rows_(std::move(rows)), script_(std::move(script)) {}
  void addSupportedParameters() override {
    supportedParameters.insert(supportedParameters.end(), rows_.begin(), rows_.end());
  }
  bool translateParameters() override { return script_(*this); }

 private:
  SupportedParameterTable rows_;
  std::function<bool(ScriptedCommand&)> script_;
};

struct Line {
  explicit Line(std::vector<std::string> tokens)
      : vector([&] {
          tokens.insert(tokens.begin(), {"tovak", "word"});
          return tokens;
        }()),
        parameters(vector.argc(), vector.argv()) {}
  ArgumentVector vector;
  Parameters parameters;
};

const SupportedParameterTable kRows = {{"-l", "--local"}, {"--xml", ""}};

TEST(CommandBaseTest, AddParameterQuotesOnlyValuesWithBlanks) {
  struct Case {
    std::string name, value, appended;
  };
  const std::vector<Case> cases = {
      {"--mt", "7X21", " --mt 7X21"},
      {"--dir", "/a b", " --dir \"/a b\""},
      {"--dir", "", " --dir "},
      {"--dir", "a\tb", " --dir a\tb"},
      {"--dir", "a\"b", " --dir a\"b"},
      {"--excludeid ", "1,2", " --excludeid  1,2"},
  };
  for (const Case& c : cases) {
    Line line({});
    ScriptedCommand command(&line.parameters, {}, nullptr);
    command.addParameter(c.name, c.value);
    EXPECT_EQ(command.getCommandLine(), c.appended) << c.value;
  }
  Line line({});
  ScriptedCommand command(&line.parameters, {}, nullptr);
  command.addParameter("--xml");
  command.addCommand("update compare");
  command.addParameter("--noscan ");
  EXPECT_EQ(command.getCommandLine(), "update compare --noscan ");
}

TEST(CommandBaseTest, RunStopsAtFirstFailingStageAndClosesTheLine) {
  struct Case {
    std::vector<std::string> tokens;
    bool scriptResult;
    bool ran;
    std::string line, printed;
  };
  const std::vector<Case> cases = {
      {{}, true, true, "update x" + kOutputOption, ""},
      {{"--xml", "-l", "/srv"}, true, true, "update x" + kOutputOption, ""},
      {{"--nope"}, true, false, "", "The parameter: --nope is not supported!"},
      {{"-l", "a", "--local=b"}, true, false, "",
       "Can not set \"-l\" and \"--local\" at the same time.\n"},
      {{"--xml"}, false, false, "update x", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.tokens));
    Line line(c.tokens);
    bool translated = false;
    ScriptedCommand command(&line.parameters, kRows, [&](ScriptedCommand& self) {
      translated = true;
      self.addCommand("update x");
      return c.scriptResult;
    });
    StdoutCapture capture;
    EXPECT_EQ(command.run(), c.ran);
    EXPECT_EQ(translated, c.ran || !c.scriptResult);
    EXPECT_EQ(command.getCommandLine(), c.line);
    EXPECT_EQ(capture.text(), c.printed);
  }
}

TEST(CommandBaseTest, OneOptionTranslationsCheckTheValue) {
  struct Case {
    std::vector<std::string> tokens;
    std::string parameter1, parameter2;
    bool hasValue;  // which operation
    bool result;
    std::string line, printed;
  };
  const std::vector<Case> cases = {
      {{}, "-l", "--local", true, true, "", ""},
      {{"-l", "/srv"}, "-l", "--local", true, true, " --dir /srv", ""},
      {{"--local=/a b"}, "-l", "--local", true, true, " --dir \"/a b\"", ""},
      {{"--local"}, "-l", "--local", true, false, "",
       "The parameter value of -l or --local can not be empty. \n"},
      {{"-l", "-x"}, "--local", "-l", true, false, "",
       "The parameter value of --local or -l can not be empty. \n"},
      {{"--esxi="}, "--esxi", "", true, false, "",
       "The parameter value of --esxi can not be empty. \n"},
      {{"-l", "x"}, "l", "", true, true, "", " The parameter should start with dash!\n"},
      {{}, "-x", "--xx", false, true, "", ""},
      {{"-x"}, "-x", "--xx", false, true, " --dir", ""},
      {{"--xx="}, "-x", "--xx", false, true, " --dir", ""},
      {{"-x", "v"}, "-x", "--xx", false, false, "",
       "The parameter -x or --xx can not carry value. \n"},
      {{"--xml=1"}, "--xml", "", false, false, "", "The parameter --xml can not carry value. \n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.tokens) + " " + c.parameter1);
    Line line(c.tokens);
    ScriptedCommand command(&line.parameters, {}, nullptr);
    StdoutCapture capture;
    const bool result =
        c.hasValue ? command.translateHasValueParameter(c.parameter1, c.parameter2, "--dir")
                   : command.translateNoValueParameter(c.parameter1, c.parameter2, "--dir");
    EXPECT_EQ(result, c.result);
    EXPECT_EQ(command.getCommandLine(), c.line);
    EXPECT_EQ(capture.text(), c.printed);
  }
}

}  // namespace
