// All checks, in the order in which they run.
#pragma once

#include "check/check.h"

#include <vector>

namespace Checking {

// For a plug-in library.
std::vector<Check> pluginChecks();

// For a library with a host (check/host_package.h).
std::vector<Check> hostChecks();

}  // namespace Checking
