// A check box bound to one option of a property: checked while the property has the option's value, enabled while the
// option is available.
#pragma once

#include "effect/vocabulary.h"
#include "kiln/property.h"
#include "kiln/widgets.h"

namespace Effect {

// Does nothing when `box` is null.
void followValue(Kiln::XUL::Toggle* box, const Kiln::ModelSelectionChange& change, Name onValue);

// Ignores changes of other options.
void followAvailability(Kiln::XUL::Toggle* box, const Kiln::ModelEnableChange& change, Name onValue);

}  // namespace Effect
