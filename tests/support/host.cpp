// A host of the library's own for the tests, reporting on standard output what it saw:
//   host line <words>                   dll_main on "/opt/t/tovak <words>", exiting with its status
//   host self-test <words>              the self-test on that vector
//   host ask <name1> <name2> <words>    the parameter queries on it, and their answers
//   host paths                          the executable's directory and this program's
//   host full <words>                   "line" after a call whose writes all fail, then
//                                       whether standard output's error indicator stayed set
//   host fail <n> <words>               "line" through the launcher's call, the n-th allocation
//                                       of the call failing
//   host syntax <texts>                 for each text, the first byte the shell reads as syntax
//                                       in a library's line and in the launcher's directory
//   host interface <statuses>           class layouts, vectors with missing strings, exec, and
//                                       the launcher's exit codes for the statuses
// system() is replaced by one that runs nothing, names the command on standard error and
// gives status 0, so that a line prints what dll_main prints and launches nothing. After the
// call one NUL byte goes straight to the descriptor: what stands before it was flushed during
// the call, what follows was left in the buffers.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "exit_code.h"
#include "shell_syntax.h"
#include "tovak/tovak.h"

extern "C" int system(const char* command) {
  std::fprintf(stderr, "ran: %s\n", command);
  return 0;
}

namespace {

// How many allocations until the one that fails; 0 when none is to fail. Only without a
// sanitizer, whose allocator must see every allocation.
long allocationsToFailure = 0;

}  // namespace

#ifndef TOVAK_SANITIZED
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* malloc(std::size_t size) {
  if (allocationsToFailure > 0 && --allocationsToFailure == 0) return nullptr;
  return __libc_malloc(size);
}
#endif

namespace {

void ask(Parameters& parameters, const std::string& first, const std::string& second) {
  const bool set = parameters.isSetParameter(first, second);
  const std::string value = parameters.getParameterValue(first, second);
  SupportedParameterTable table = {{"-q", second}}, row = {{first, second}};
  const bool supported = parameters.checkSupportedParameters(row);
  std::printf("%d%d%d %s set=%d value=%s single=%s listed=%d supported=%d\n",
              parameters.isNotStartWithDash(first), parameters.isStartWithSingleDash(first),
              parameters.isStartWithDoubleDash(first), parameters.getParameterName(first).c_str(),
              set, value.c_str(), parameters.getSingleParameterValue(first).c_str(),
              parameters.ifParameterInVectorpair(first, table), supported);
}

// The classes as a caller compiled against the headers lays them out. A caller builds
// Parameters on its stack and derives from CommandBase: a member added, dropped or moved
// breaks it silently. The last field of CommandLayout is CompareUpdateCommand's own.
// clang-format off
struct ParametersLayout { void* vptr; std::string command; std::vector<std::string> parameterList; };
struct CommandLayout { void* vptr; SupportedParameterTable supportedParameters; Parameters* parameters;
                       std::string commandLine; std::string commandName; };
struct TestLayout { void* vptr; int argc; char** argv; };
// clang-format on

template <typename T>
const T& fieldAt(const void* object, std::size_t offset) {
  return *reinterpret_cast<const T*>(static_cast<const char*>(object) + offset);
}

// The vtable slot of a virtual member function, whose pointer holds 1 + the byte offset.
template <typename Member>
std::size_t slotOf(Member member) {
  std::size_t raw[2];
  static_assert(sizeof member == sizeof raw);
  std::memcpy(raw, &member, sizeof raw);
  return (raw[0] - 1) / sizeof(void*);
}

void checkLayouts(char** vector) {  // "t qk -s"
  Parameters parameters(3, vector);
  CompareUpdateCommand compare(&parameters, "compare");
  QuenmarkCommand quenmark(&parameters);
  Test test(7, vector);
  quenmark.run();
  const std::size_t base = offsetof(CommandLayout, commandName);
  const bool fields =
      fieldAt<std::string>(&parameters, offsetof(ParametersLayout, command)) == "qk" &&
      fieldAt<std::vector<std::string>>(&parameters, offsetof(ParametersLayout, parameterList)) ==
          std::vector<std::string>{"-s"} &&
      fieldAt<SupportedParameterTable>(&quenmark, offsetof(CommandLayout, supportedParameters))
              .size() == 4 &&
      fieldAt<Parameters*>(&quenmark, offsetof(CommandLayout, parameters)) == &parameters &&
      fieldAt<std::string>(&quenmark, offsetof(CommandLayout, commandLine)) ==
          quenmark.getCommandLine() &&
      fieldAt<std::string>(&compare, offsetof(CommandLayout, commandName)) == "compare" &&
      fieldAt<int>(&test, offsetof(TestLayout, argc)) == 7 &&
      fieldAt<char**>(&test, offsetof(TestLayout, argv)) == vector;
  std::printf("sizes: %d\n", sizeof parameters == sizeof(ParametersLayout) &&
                                sizeof compare == sizeof(CommandLayout) &&
                                sizeof test == sizeof(TestLayout) && sizeof(CommandBase) == base &&
                                sizeof(AcquireCommand) == base && sizeof quenmark == base);
  std::printf("fields: %d\n", fields);
  std::printf("virtual slots: %zu %zu %zu\n", slotOf(&CommandBase::addSupportedParameters),
              slotOf(&CommandBase::checkConflictParameters),
              slotOf(&CommandBase::translateParameters));
}

// A caller's class derived from one of the library's translators: run() must take its
// translation, not the library's.
struct OwnScan : QuenmarkCommand {
  using QuenmarkCommand::QuenmarkCommand;
  bool translateParameters() override { return addCommand("own"), true; }
};

// Each fact on a line of its own, "label: value", after whatever the library printed for it.
void checkInterface(char** statuses) {
  char program[] = "t", dash[] = "-x";
  char* strings[] = {program, nullptr, dash, nullptr};
  char vector[][3] = {"t", "qk", "-s"};
  char* pointers[] = {vector[0], vector[1], vector[2]};
  checkLayouts(pointers);
  Parameters scan(3, pointers);  // a caller's own use of the translate operations
  QuenmarkCommand command(&scan);
  std::printf("flag: %d\n", command.translateNoValueParameter("-s", "--scan", "flag"));
  std::printf("valued, no value: %d\n", command.translateHasValueParameter("--x", "-s", "v"));
  std::printf("valued, dashless: %d\n", command.translateHasValueParameter("-s", "s", "v"));
  std::printf("flag, dashless: %d\n", command.translateNoValueParameter("-s", "s", "w"));
  command.addParameter("word");
  command.addParameter("--pair", "a b");
  OwnScan derived(&scan);
  command.addParameter(derived.run() ? derived.getCommandLine() : "not run");
  Parameters none(0, nullptr);
  command.addParameter(CompareUpdateCommand(&none, "update")
                           .getMatchValueFromString("--user=u,--password=p", "--password="));
  std::printf("built: %s\n", command.getCommandLine().c_str());
  // The steps of run() called one by one, as a caller may.
  CompareUpdateCommand compare(&scan, "compare");
  AcquireCommand acquire(&scan);
  QuenmarkCommand quenmark(&scan);
  compare.addSupportedParameters();
  acquire.addSupportedParameters();
  std::printf("compare supports: %d\n", compare.checkSupportedParameters());
  std::printf("\nacquire supports: %d\n", acquire.checkSupportedParameters());
  std::printf("compare translates: %d\n", compare.translateParameters());
  std::printf("acquire translates: %d\n", acquire.translateParameters());
  std::printf("quenmark translates: %d\n", quenmark.translateParameters());
  std::printf("lines: %s, %s, %s\n", compare.getCommandLine().c_str(),
              acquire.getCommandLine().c_str(), quenmark.getCommandLine().c_str());
  std::printf("missing strings: '%s' %d\n", Parameters(4, strings).getCommand().c_str(),
              Parameters(4, strings).isSetParameter("-x", ""));
  std::printf("missing vector: '%s'\n", Parameters(3, nullptr).getCommand().c_str());
  std::printf("dll_main, missing vector: %d\n", dll_main(2, nullptr));
  std::printf("dll_main, missing strings: %d\n", dll_main(3, strings));
  Test(2, nullptr).printCommandAndParamaters();
  std::printf("exec: %d\n", exec(""));
  std::printf("paths: %s %s\n", GetCurProcessPath().c_str(), GetSysTempPath().c_str());
  std::printf("modules: %s %s '%s'\n", GetModulePathLin(reinterpret_cast<void*>(&ask)).c_str(),
              GetModulePathLin(reinterpret_cast<void*>(&::getenv)).c_str(),
              GetModulePathLin(nullptr).c_str());
  const auto throwing = [](int, char**) -> int { throw std::runtime_error("thrown"); };
  std::printf("exception: %d\n", launcher::exitCodeOfCall(throwing, 0, nullptr));
  const auto throwingInt = [](int, char**) -> int { throw 0; };
  std::printf("unknown exception: %d\n", launcher::exitCodeOfCall(throwingInt, 0, nullptr));
  for (; *statuses != nullptr; ++statuses) {
    std::printf("exit code for %s: %d\n", *statuses, launcher::exitCodeFor(std::atoi(*statuses)));
  }
}

// A call whose every write fails, after a failed write of the host's own.
void callWritingToFull(std::vector<std::string> strings) {
  std::vector<char*> vector;
  for (std::string& text : strings) vector.push_back(text.data());
  const int saved = dup(STDOUT_FILENO);
  dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO);
  std::printf("host\n");
  std::fflush(stdout);
  dll_main(static_cast<int>(vector.size()), vector.data());
  dup2(saved, STDOUT_FILENO);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string how = argc > 1 ? argv[1] : "paths";
  const int firstWord = std::min(how == "ask" ? 4 : how == "fail" ? 3 : 2, argc);
  std::vector<std::string> strings{"/opt/t/tovak"};
  strings.insert(strings.end(), argv + firstWord, argv + argc);
  std::vector<char*> vector;
  for (std::string& text : strings) vector.push_back(text.data());
  Parameters parameters(static_cast<int>(vector.size()), vector.data());
  int status = 0;
  if (how == "full") callWritingToFull(strings);
  if (how == "line" || how == "full")
    status = dll_main(static_cast<int>(vector.size()), vector.data());
  if (how == "fail") {
    allocationsToFailure = std::atol(argv[2]);
    status = launcher::exitCodeOfCall(&dll_main, static_cast<int>(vector.size()), vector.data());
    if (allocationsToFailure > 0) std::fprintf(stderr, "not reached\n");
    allocationsToFailure = 0;
  }
  if (how == "self-test") {
    Test test(static_cast<int>(vector.size()), vector.data());
    test.printCommandAndParamaters();
    test.testParameters();
  }
  if (how == "ask") ask(parameters, argv[2], argv[3]);
  if (how == "paths") {
    std::printf("%s\n%s\n", GetCurProcessPathLin().c_str(),
                GetModulePathLin(reinterpret_cast<void*>(&ask)).c_str());
  }
  if (how == "interface") checkInterface(argv + 2);
  for (int i = 2; how == "syntax" && i < argc; ++i) {
    const std::optional<char> inLine = launcher::firstSyntaxByte(argv[i]);
    const std::optional<unsigned char> inPath = launcher::firstShellSyntaxByte(argv[i]);
    std::printf("%x %x\n", inLine ? static_cast<unsigned char>(*inLine) : 0, inPath ? *inPath : 0);
  }
  if (how == "full") std::fprintf(stderr, "error indicator: %d\n", std::ferror(stdout) != 0);
  if (write(STDOUT_FILENO, "", 1) != 1) return 99;
  // The caller's strings after the first: blanks now, each as long as before.
  for (std::size_t i = 0; how == "line" && i < strings.size(); ++i) {
    const bool blank = strings[i].find_first_not_of(' ') == std::string::npos;
    if (std::strlen(vector[i]) != strings[i].size() || blank != (i > 0)) {
      std::fprintf(stderr, "argument %zu is wrong afterwards: '%s'\n", i, vector[i]);
    }
  }
  return status;
}
