#include "commands/own_translators.h"

#include <typeinfo>

namespace tovak {

namespace {

// Compared by address, not by name: a class of the same name built elsewhere only misses
// the shared index and takes the virtual call, which gives the same line.
template <typename Translator>
bool isExactly(const std::type_info& type) {
  return &type == &typeid(Translator);
}

}  // namespace

bool OwnTranslators::translateAny(CommandBase& translator, const OptionIndex& index) {
  const std::type_info& type = typeid(translator);
  if (isExactly<CompareUpdateCommand>(type)) {
    return translate(static_cast<CompareUpdateCommand&>(translator), index);
  }
  if (isExactly<AcquireCommand>(type)) {
    return translate(static_cast<AcquireCommand&>(translator), index);
  }
  if (isExactly<QuenmarkCommand>(type)) {
    return translate(static_cast<QuenmarkCommand&>(translator), index);
  }
  return translator.translateParameters();
}

}  // namespace tovak
