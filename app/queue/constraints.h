// The model's rules about the effects of a queue, as constraints of its description.
#pragma once

#include "app/queue/effects.h"
#include "host/model/description.h"

#include <string>
#include <vector>

namespace App {

// For each of the options with an effect, the choices of other options that the rules keep apart from it: of effects,
// and of the printer's own options for paper and colour. A rule about facts that a description does not tell (pages per
// sheet), or with several conditions, has no constraint, and jobs are not held to it. Those that the defaults would
// violate are left out, since no dialog could be confirmed.
std::vector<QueueConstraint> constraintsOf(const std::vector<QueueOption>& options,
                                           const Refhost::ModelDescription& model, const std::string& description);

}  // namespace App
