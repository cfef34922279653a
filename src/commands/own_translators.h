// The library's own translators, answered from an index of the tokens that the caller has
// built. run() builds one index for the support check and hands it on here, so that a call
// indexes its tokens once; each translator's translateParameters() builds its own.
#ifndef TOVAK_COMMANDS_OWN_TRANSLATORS_H
#define TOVAK_COMMANDS_OWN_TRANSLATORS_H

#include "parameters/option_index.h"
#include "tovak/acquire_command.h"
#include "tovak/command_base.h"
#include "tovak/compare_update_command.h"
#include "tovak/quenmark_command.h"

namespace tovak {

// A friend of each translator class: it reaches their fields without adding a member or an
// exported name.
class OwnTranslators {
 public:
  // The translation of a translator that is exactly one of the library's classes, from the
  // index; any other, a caller's class derived from one included, through its own
  // translateParameters().
  static bool translateAny(CommandBase& translator, const OptionIndex& index);

  // Each is defined beside its class's translateParameters().
  static bool translate(CompareUpdateCommand& command, const OptionIndex& index);
  static bool translate(AcquireCommand& command, const OptionIndex& index);
  static bool translate(QuenmarkCommand& command, const OptionIndex& index);
};

}  // namespace tovak

#endif  // TOVAK_COMMANDS_OWN_TRANSLATORS_H
