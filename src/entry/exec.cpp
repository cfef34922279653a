#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/console.h"
#include "tovak/entry.h"
#include "tovak/process_path.h"

int exec(std::string commandLine) {
  // Fendix is looked for beside the launcher's program file, not beside this library.
  constexpr std::string_view kProgram = "./Fendix ";
  std::string fullCommand = GetCurProcessPath();
  // One more buffer, not one per piece: the allocations of a call are budgeted.
  fullCommand.reserve(fullCommand.size() + kProgram.size() + commandLine.size());
  fullCommand.append(kProgram).append(commandLine);
  tovak::writeLine("The translated command is: ");
  tovak::writeLine(fullCommand);
  const int status = std::system(fullCommand.c_str());
  std::printf("The fendx return code is: %d\n", status);
  std::fflush(stdout);
  return status;
}
