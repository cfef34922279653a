// Feeds arbitrary argument vectors through everything dll_main does short of running the
// tool, and through the self-test, checking properties rather than mere survival.
// Input: the argument tokens separated by '\n', the first one being the command word.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "entry/translation.h"
#include "tovak/test.h"

namespace {

void check(bool holds, const char* property) {
  if (!holds) {
    std::fprintf(stderr, "property broken: %s\n", property);
    std::abort();
  }
}

// A writable vector as a launcher hands it over, and what the library printed with it.
struct Call {
  explicit Call(const std::vector<std::string>& tokens) : strings(tokens) {
    strings.insert(strings.begin(), "fuzz");
    for (std::string& text : strings) argv.push_back(text.data());
  }
  template <typename Body>
  std::string printedBy(Body body) {
    std::ostringstream captured;
    std::streambuf* previous = std::cout.rdbuf(captured.rdbuf());
    body(static_cast<int>(argv.size()), argv.data());
    std::cout.rdbuf(previous);
    return captured.str();
  }
  std::vector<std::string> strings;
  std::vector<char*> argv;
};

struct Run {
  tovak::Translation translation;
  std::string printed;
};

Run translate(const std::vector<std::string>& tokens) {
  Call call(tokens);
  Run run;
  run.printed = call.printedBy(
      [&](int argc, char** argv) { run.translation = tovak::translateArguments(argc, argv); });
  check(std::strcmp(call.argv[0], "fuzz") == 0, "argv[0] is left alone");
  for (std::size_t i = 1; i < call.argv.size(); ++i) {
    const std::size_t length = std::strlen(tokens[i - 1].c_str());  // up to a NUL byte
    check(std::string(call.argv[i]) == std::string(length, ' '),
          "the caller's strings are all blanks afterwards, lengths kept");
  }
  return run;
}

// The self-test echoes each element on a line of its own: reading them back gives the vector.
void checkSelfTestEchoesTheVector(const std::vector<std::string>& tokens) {
  Call call(tokens);
  std::istringstream lines(call.printedBy([](int argc, char** argv) {
    Test test(argc, argv);
    test.printCommandAndParamaters();
    test.testParameters();
  }));
  std::string line;
  std::getline(lines, line);
  check(line == "argc: " + std::to_string(call.argv.size()), "self-test counts the vector");
  for (std::size_t i = 0; i < call.argv.size(); ++i) {
    std::getline(lines, line);
    check(line == "argv[" + std::to_string(i) + "]:" + call.argv[i],
          "self-test echoes each element");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  std::vector<std::string> tokens(1);
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == '\n') {
      tokens.emplace_back();
    } else {
      tokens.back().push_back(static_cast<char>(data[i]));
    }
  }
  const Run first = translate(tokens);
  const Run second = translate(tokens);
  check(first.translation.accepted == second.translation.accepted &&
            first.translation.commandLine == second.translation.commandLine &&
            first.printed == second.printed,
        "translating twice gives the same line and the same messages");
  static const std::string kOutput = " --output /var/log/Zantor_Support/";
  const std::string& line = first.translation.commandLine;
  if (first.translation.accepted) {
    check(line.size() >= kOutput.size() && line.substr(line.size() - kOutput.size()) == kOutput,
          "an accepted line ends with the output option");
  } else {
    check(line.empty() && !first.printed.empty(), "a refused vector gives no line, only messages");
  }
  checkSelfTestEchoesTheVector(tokens);
  return 0;
}
