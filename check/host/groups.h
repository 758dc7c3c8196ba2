// The groups of a host's checks, one file each.
#pragma once

#include "check/check.h"

#include <vector>

namespace Checking {

std::vector<Check> orderChecks();
std::vector<Check> transitionChecks();
std::vector<Check> serviceChecks();
std::vector<Check> widgetChecks();

}  // namespace Checking
