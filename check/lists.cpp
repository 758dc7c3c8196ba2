#include "check/lists.h"

#include "check/host/groups.h"
#include "check/plugin/groups.h"

namespace Checking {
namespace {

using Group = std::vector<Check>();

std::vector<Check> joined(std::initializer_list<Group*> groups) {
  std::vector<Check> all;
  for (Group* group : groups)
    for (const Check& check : group()) all.push_back(check);
  return all;
}

}  // namespace

std::vector<Check> pluginChecks() {
  return joined({contractChecks, lifeCycleChecks, stateChecks, layoutChecks, actionChecks, propertyChecks,
                 failureChecks, ticketChecks});
}

std::vector<Check> hostChecks() { return joined({orderChecks, transitionChecks, serviceChecks, widgetChecks}); }

}  // namespace Checking
