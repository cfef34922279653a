// Translates the legacy "compare"/"co" and "update"/"up" commands into Fendix's
// "update compare" and "update flash".
#ifndef TOVAK_COMPARE_UPDATE_COMMAND_H
#define TOVAK_COMPARE_UPDATE_COMMAND_H

#include <string>

#include "tovak/command_base.h"
#include "tovak/export.h"

class TOVAK_API CompareUpdateCommand : public CommandBase {
 public:
  // commandName is the full word, "compare" or "update".
  CompareUpdateCommand(Parameters* parameters, std::string commandName);
  ~CompareUpdateCommand() override;

  void addSupportedParameters() override;
  bool translateParameters() override;

  // The text after the key inside value, up to the first blank or comma; "" without the key.
  std::string getMatchValueFromString(std::string value, std::string key);

 private:
  std::string commandName;
};

#endif  // TOVAK_COMPARE_UPDATE_COMMAND_H
