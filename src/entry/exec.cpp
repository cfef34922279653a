#include <cstdlib>
#include <string>

#include "platform/console.h"
#include "tovak/entry.h"
#include "tovak/process_path.h"

int exec(std::string commandLine) {
  // Fendix is looked for beside the launcher's program file, not beside this library.
  const std::string fullCommand = GetCurProcessPath() + "./Fendix " + commandLine;
  tovak::writeLine("The translated command is: ");
  tovak::writeLine(fullCommand);
  const int status = std::system(fullCommand.c_str());
  tovak::writeLine("The fendx return code is: " + std::to_string(status));
  return status;
}
