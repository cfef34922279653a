// What callers outside the library rely on beyond the legacy lines: the layout of the
// exported classes, vectors with missing strings, and the path functions and exec called
// directly.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <filesystem>

#include "support.h"
#include "tovak/tovak.h"

namespace {

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

TEST(InterfaceTest, ClassesKeepTheLayoutCallersAssume) {
  ArgumentVector vector({"t", "qk", "-s"});
  Parameters parameters(vector.argc(), vector.argv());
  CompareUpdateCommand compare(&parameters, "compare");
  QuenmarkCommand quenmark(&parameters);
  ::Test test(7, vector.argv());  // not GoogleTest's
  EXPECT_TRUE(quenmark.run());
  EXPECT_EQ(sizeof parameters, sizeof(ParametersLayout));
  EXPECT_EQ(sizeof compare, sizeof(CommandLayout));
  EXPECT_EQ(sizeof test, sizeof(TestLayout));
  for (const std::size_t size : {sizeof(CommandBase), sizeof(AcquireCommand), sizeof quenmark}) {
    EXPECT_EQ(size, offsetof(CommandLayout, commandName));
  }
  EXPECT_EQ(fieldAt<std::string>(&parameters, offsetof(ParametersLayout, command)), "qk");
  EXPECT_EQ(fieldAt<std::vector<std::string>>(&parameters, offsetof(ParametersLayout, parameterList)),
            std::vector<std::string>{"-s"});
  EXPECT_EQ(fieldAt<SupportedParameterTable>(&quenmark, offsetof(CommandLayout, supportedParameters)),
            (SupportedParameterTable{{"-s", "--scan"}, {"--vq-address", ""}, {"--vq-user", ""},
                                     {"--vq-password", ""}}));
  EXPECT_EQ(fieldAt<Parameters*>(&quenmark, offsetof(CommandLayout, parameters)), &parameters);
  EXPECT_EQ(fieldAt<std::string>(&quenmark, offsetof(CommandLayout, commandLine)),
            quenmark.getCommandLine());
  EXPECT_EQ(fieldAt<std::string>(&compare, offsetof(CommandLayout, commandName)), "compare");
  EXPECT_EQ(fieldAt<int>(&test, offsetof(TestLayout, argc)), 7);
  EXPECT_EQ(fieldAt<char**>(&test, offsetof(TestLayout, argv)), vector.argv());
  // Slots 0 and 1 hold the destructors.
  EXPECT_EQ(slotOf(&CommandBase::addSupportedParameters), 2u);
  EXPECT_EQ(slotOf(&CommandBase::checkConflictParameters), 3u);
  EXPECT_EQ(slotOf(&CommandBase::translateParameters), 4u);
}

TEST(InterfaceTest, MissingStringsReadAsEmpty) {
  char dash[] = "-x";
  char* withHoles[] = {nullptr, nullptr, dash, nullptr};
  Parameters holes(4, withHoles);
  EXPECT_EQ(holes.getCommand(), "");
  EXPECT_TRUE(holes.isSetParameter("-x", ""));
  EXPECT_EQ(Parameters(3, nullptr).getCommand(), "");
  OutputCapture capture;
  EXPECT_EQ(dll_main(2, nullptr), 1);
  EXPECT_EQ(dll_main(3, withHoles), 1);
  ::Test(2, nullptr).printCommandAndParamaters();
  ::Test(2, nullptr).testParameters();
  EXPECT_EQ(capture.flushed(),
            "Please specify the command!\nPlease specify the command!\n"
            "argc: 2\nargv[0]:\nargv[1]:\nfendixParameters:  \n"
            "Test paramters.checkValidParametersFormat ... \nReport true!\n"
            "Test paramters.isSetParameter ... \nReport false!\n"
            "Test paramters.getParameterValue ... \nValue is: \n");
}

TEST(InterfaceTest, PathsAndAnEmptyCommandLine) {
  const std::string bin = binDirectory();
  EXPECT_EQ(GetCurProcessPath(), bin);
  EXPECT_EQ(GetSysTempPath(), "/tmp/");
  EXPECT_EQ(GetModulePathLin(reinterpret_cast<void*>(&binDirectory)), bin);
  const std::string libc = GetModulePathLin(reinterpret_cast<void*>(&::getenv));
  EXPECT_TRUE(std::filesystem::exists(libc + "libc.so.6")) << libc;
  EXPECT_EQ(GetModulePathLin(nullptr), "");
  OutputCapture capture;
  EXPECT_EQ(exec(""), 0);  // no arguments at all: the command ends in "Fendix "
  EXPECT_EQ(capture.flushed(), "The translated command is: \n" + bin +
                                   "./Fendix \nFendix stand-in received 0 arguments\n"
                                   "The fendx return code is: 0\n");
}

}  // namespace
