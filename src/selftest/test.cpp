#include "tovak/test.h"

#include <cstring>
#include <string>

#include "platform/console.h"
#include "tovak/parameters.h"

namespace {

std::string reportOf(bool passed) { return passed ? "Report true!" : "Report false!"; }

}  // namespace

Test::Test(int argc, char** argv) : argc(argc), argv(argv) {}

Test::~Test() = default;

void Test::printCommandAndParamaters() {
  tovak::writeLine("argc: " + std::to_string(argc));
  std::string joined;
  for (int i = 0; i < argc; ++i) {
    const char* element = argv != nullptr && argv[i] != nullptr ? argv[i] : "";
    tovak::writeLine("argv[" + std::to_string(i) + "]:" + element);
    if (i == 0) {
      continue;
    }
    // Joined the way a value with a blank is quoted on the translated line.
    if (std::strchr(element, ' ') != nullptr) {
      joined.append("\"").append(element).append("\"");
    } else {
      joined.append(element);
    }
    joined.append(" ");
  }
  tovak::writeLine("fendixParameters: " + joined);
}

void Test::testParameters() {
  Parameters parameters(argc, argv);
  tovak::writeLine("Test paramters.checkValidParametersFormat ... ");
  tovak::writeLine(reportOf(parameters.checkValidParametersFormat()));
  tovak::writeLine("Test paramters.isSetParameter ... ");
  tovak::writeLine(reportOf(parameters.isSetParameter("-m", "--machinetype")));
  tovak::writeLine("Test paramters.getParameterValue ... ");
  tovak::writeLine("Value is: " + parameters.getParameterValue("-m", "--machinetype"));
}
