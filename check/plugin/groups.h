// The groups of a plug-in's checks, one file each.
#pragma once

#include "check/check.h"

#include <vector>

namespace Checking {

std::vector<Check> contractChecks();
std::vector<Check> lifeCycleChecks();
std::vector<Check> stateChecks();
std::vector<Check> layoutChecks();
std::vector<Check> actionChecks();
std::vector<Check> propertyChecks();
std::vector<Check> failureChecks();
std::vector<Check> ticketChecks();

}  // namespace Checking
