// All checks, in the order in which they run.
#pragma once

#include "check/check.h"

#include <vector>

namespace Checking {

// For a plug-in library.
std::vector<Check> pluginChecks();

// For a library with a host (kiln/host_check.h).
std::vector<Check> hostChecks();

}  // namespace Checking
