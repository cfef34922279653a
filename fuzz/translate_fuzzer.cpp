// Feeds arbitrary argument vectors through everything dll_main does short of running the
// tool, and through the self-test, checking properties rather than mere survival.
//
// Input: the argument tokens separated by '\n' (the first token is the command word).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "entry/translation.h"
#include "tovak/test.h"

namespace {

const std::string kOutputOption = " --output /var/log/Zantor_Support/";

// A writable argument vector, as a launcher hands it over.
class Vector {
 public:
  explicit Vector(const std::vector<std::string>& tokens) : storage_(tokens) {
    storage_.insert(storage_.begin(), "fuzz");
    for (std::string& text : storage_) pointers_.push_back(text.data());
  }
  int argc() { return static_cast<int>(pointers_.size()); }
  char** argv() { return pointers_.data(); }

 private:
  std::vector<std::string> storage_;
  std::vector<char*> pointers_;
};

struct Run {
  tovak::Translation translation;
  std::string printed;
  bool blanked = true;
};

void check(bool condition, const char* property) {
  if (!condition) {
    std::fprintf(stderr, "property broken: %s\n", property);
    std::abort();
  }
}

Run translate(const std::vector<std::string>& tokens) {
  Vector vector(tokens);
  std::ostringstream captured;
  std::streambuf* previous = std::cout.rdbuf(captured.rdbuf());
  Run run;
  run.translation = tovak::translateArguments(vector.argc(), vector.argv());
  std::cout.rdbuf(previous);
  run.printed = captured.str();
  // Every caller string but the program path is blanked, up to its (C string) length.
  check(std::strcmp(vector.argv()[0], "fuzz") == 0, "argv[0] is left alone");
  for (int i = 1; i < vector.argc(); ++i) {
    const std::size_t length = std::strlen(vector.argv()[i]);
    const std::size_t expected = std::strlen(tokens[static_cast<std::size_t>(i - 1)].c_str());
    run.blanked = run.blanked && length == expected &&
                  std::string(vector.argv()[i]) == std::string(length, ' ');
  }
  return run;
}

// The self-test echoes each element on a line of its own: reading them back gives the vector.
void checkSelfTestEchoesTheVector(const std::vector<std::string>& tokens) {
  Vector vector(tokens);
  std::ostringstream captured;
  std::streambuf* previous = std::cout.rdbuf(captured.rdbuf());
  Test test(vector.argc(), vector.argv());
  test.printCommandAndParamaters();
  test.testParameters();
  std::cout.rdbuf(previous);
  std::istringstream lines(captured.str());
  std::string line;
  std::getline(lines, line);
  check(line == "argc: " + std::to_string(vector.argc()), "self-test counts the vector");
  for (int i = 0; i < vector.argc(); ++i) {
    std::getline(lines, line);
    const std::string prefix = "argv[" + std::to_string(i) + "]:";
    check(line.rfind(prefix, 0) == 0, "self-test numbers the elements");
    check(line.substr(prefix.size()) == vector.argv()[i], "self-test echoes each element");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  std::vector<std::string> tokens;
  std::size_t start = 0;
  for (std::size_t end; (end = input.find('\n', start)) != std::string::npos; start = end + 1) {
    tokens.push_back(input.substr(start, end - start));
  }
  if (start < input.size() || tokens.empty()) tokens.push_back(input.substr(start));

  const Run first = translate(tokens);
  const Run second = translate(tokens);
  check(first.blanked && second.blanked, "the caller's strings are all blanks afterwards");
  check(first.translation.accepted == second.translation.accepted, "same outcome twice");
  check(first.translation.commandLine == second.translation.commandLine, "same line twice");
  check(first.printed == second.printed, "same messages twice");
  if (first.translation.accepted) {
    const std::string& line = first.translation.commandLine;
    check(line.size() >= kOutputOption.size() &&
              line.compare(line.size() - kOutputOption.size(), kOutputOption.size(),
                           kOutputOption) == 0,
          "an accepted line ends with the output option");
  } else {
    check(first.translation.commandLine.empty(), "a refused vector produces no line");
    check(!first.printed.empty(), "a refused vector says why");
  }
  checkSelfTestEchoesTheVector(tokens);
  return 0;
}
