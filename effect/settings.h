// The host's settings, as the plug-in reads them.
#pragma once

#include "effect/vocabulary.h"
#include "kiln/property.h"

#include <string>

namespace Effect {

// The value of a key; empty, or false, when the host does not have the key.
std::u16string settingText(Kiln::Property& settings, Name key);
bool settingFlag(Kiln::Property& settings, Name key);

}  // namespace Effect
