// The exported classes as a caller compiled against the headers lays them out: sizes, field
// offsets and virtual slots. A caller builds Parameters on its stack and derives from
// CommandBase, so a member added, dropped or moved breaks it silently.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "support.h"
#include "tovak/tovak.h"

namespace {

struct ParametersLayout {
  void* vptr;
  std::string command;
  std::vector<std::string> parameterList;
};
struct CommandLayout {
  void* vptr;
  SupportedParameterTable supportedParameters;
  Parameters* parameters;
  std::string commandLine;
  std::string commandName;  // CompareUpdateCommand's own
};
struct TestLayout {
  void* vptr;
  int argc;
  char** argv;
};

template <typename T>
const T& fieldAt(const void* object, std::size_t offset) {
  return *reinterpret_cast<const T*>(static_cast<const char*>(object) + offset);
}

// The vtable slot of a virtual member function (its pointer holds 1 + the byte offset).
template <typename Member>
std::uintptr_t slotOf(Member member) {
  std::uintptr_t raw[2];
  static_assert(sizeof member == sizeof raw);
  std::memcpy(raw, &member, sizeof raw);
  return (raw[0] - 1) / sizeof(void*);
}

TEST(LayoutTest, ClassesKeepTheLayoutCallersAssume) {
  ArgumentVector vector({"t", "qk", "-s"});
  Parameters parameters(vector.argc(), vector.argv());
  EXPECT_EQ(sizeof parameters, sizeof(ParametersLayout));
  EXPECT_EQ(fieldAt<std::string>(&parameters, offsetof(ParametersLayout, command)), "qk");
  EXPECT_EQ(fieldAt<std::vector<std::string>>(&parameters, offsetof(ParametersLayout, parameterList)),
            std::vector<std::string>{"-s"});

  CompareUpdateCommand compare(&parameters, "compare");
  QuenmarkCommand quenmark(&parameters);
  quenmark.addSupportedParameters();
  EXPECT_EQ(sizeof(CommandBase), offsetof(CommandLayout, commandName));
  EXPECT_EQ(sizeof(QuenmarkCommand), sizeof(CommandBase));
  EXPECT_EQ(sizeof(AcquireCommand), sizeof(CommandBase));
  EXPECT_EQ(sizeof compare, sizeof(CommandLayout));
  EXPECT_EQ(fieldAt<SupportedParameterTable>(&quenmark, offsetof(CommandLayout, supportedParameters)).size(), 4u);
  EXPECT_EQ(fieldAt<Parameters*>(&quenmark, offsetof(CommandLayout, parameters)), &parameters);
  EXPECT_TRUE(quenmark.run());
  EXPECT_EQ(fieldAt<std::string>(&quenmark, offsetof(CommandLayout, commandLine)),
            quenmark.getCommandLine());
  EXPECT_EQ(fieldAt<std::string>(&compare, offsetof(CommandLayout, commandName)), "compare");
  // Slots 0 and 1 are the destructors.
  EXPECT_EQ(slotOf(&CommandBase::addSupportedParameters), 2u);
  EXPECT_EQ(slotOf(&CommandBase::checkConflictParameters), 3u);
  EXPECT_EQ(slotOf(&CommandBase::translateParameters), 4u);

  char* strings[] = {vector.argv()[0]};
  ::Test test(7, strings);
  EXPECT_EQ(sizeof test, sizeof(TestLayout));
  EXPECT_EQ(fieldAt<int>(&test, offsetof(TestLayout, argc)), 7);
  EXPECT_EQ(fieldAt<char**>(&test, offsetof(TestLayout, argv)), strings);
}

}  // namespace
