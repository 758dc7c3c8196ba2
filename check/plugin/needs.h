// Which properties of the model a plug-in can do without.
#pragma once

#include "check/check.h"

#include <string>

namespace Checking {

enum class Need { optional, mandatory, untold };

// What is told of the property; a plug-in that is asked for nothing may open without it, or say by an exception why it
// does not.
inline Need needOf(const Subject&, const std::u16string&) { return Need::untold; }

}  // namespace Checking
