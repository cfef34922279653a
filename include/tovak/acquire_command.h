// Translates the legacy "acquire"/"ac" command into Fendix's "update acquire", which
// downloads updates into a local directory.
#ifndef TOVAK_ACQUIRE_COMMAND_H
#define TOVAK_ACQUIRE_COMMAND_H

#include "tovak/command_base.h"
#include "tovak/export.h"

class TOVAK_API AcquireCommand : public CommandBase {
 public:
  explicit AcquireCommand(Parameters* parameters);
  ~AcquireCommand() override;

  void addSupportedParameters() override;
  bool translateParameters() override;
};

#endif  // TOVAK_ACQUIRE_COMMAND_H
