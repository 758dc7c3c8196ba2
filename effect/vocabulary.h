// The names and formats that the plug-in shares with others, for all of the plug-in.
#pragma once

#include "formats/names.h"

namespace Effect {

using namespace Formats;

}  // namespace Effect
