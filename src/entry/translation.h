// Everything one call of dll_main does short of launching the update tool: copy and blank
// the arguments, parse, check the shape, choose the translator and translate. Tests, the
// fuzzer and the benchmarks use it to translate a line without running the shell.
#ifndef TOVAK_ENTRY_TRANSLATION_H
#define TOVAK_ENTRY_TRANSLATION_H

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "tovak/command_base.h"
#include "tovak/parameters.h"

namespace tovak {

// What dll_main returns for any rejected line.
constexpr int kRejected = 1;

struct Translation {
  bool accepted = false;    // false: the line was refused and its messages are printed
  std::string commandLine;  // the Fendix command line, when accepted
};

// A command word, its abbreviation and the translator both select.
struct CommandWord {
  std::string_view name;
  std::string_view abbreviation;
  std::unique_ptr<CommandBase> (*create)(Parameters* parameters);
};

// Every command word the library knows, in the order its help and manual list them; the
// manual, the help and the shell completion are generated from it.
extern const std::array<CommandWord, 4> kCommandWords;

// The translator for a command word, on the given parameters; null for an empty or
// unknown word. Matched exactly and case-sensitively.
std::unique_ptr<CommandBase> createTranslator(const std::string& word, Parameters* parameters);

// The option table of the translator that a command word selects, as run() fills it; empty
// for an unknown word. The manual pages and the completion are generated from it.
SupportedParameterTable optionTableOf(const std::string& word);

// Copies argv, blanks the caller's argv[1..argc-1] and translates the copies.
Translation translateArguments(int argc, char** argv);

}  // namespace tovak

#endif  // TOVAK_ENTRY_TRANSLATION_H
