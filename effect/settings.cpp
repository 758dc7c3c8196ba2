#include "effect/settings.h"

namespace Effect {

std::u16string settingText(Kiln::Property& settings, Name key) {
  const auto found = settings.child(key);
  return found ? found->wideValue().str() : std::u16string();
}

bool settingFlag(Kiln::Property& settings, Name key) {
  const auto found = settings.child(key);
  return found && found->boolValue();
}

}  // namespace Effect
