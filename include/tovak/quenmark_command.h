// Translates the legacy chassis command "quenmark"/"qk" into Fendix's "update scan" of a
// chassis through its management module.
#ifndef TOVAK_QUENMARK_COMMAND_H
#define TOVAK_QUENMARK_COMMAND_H

#include "tovak/command_base.h"
#include "tovak/export.h"

class TOVAK_API QuenmarkCommand : public CommandBase {
 public:
  explicit QuenmarkCommand(Parameters* parameters);
  ~QuenmarkCommand() override;

  void addSupportedParameters() override;
  bool translateParameters() override;
};

#endif  // TOVAK_QUENMARK_COMMAND_H
