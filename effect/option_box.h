// The pattern of a check box that mirrors one option of a property: checked exactly while the property has the option's
// value, operable exactly while the option is available.
#pragma once

#include "effect/vocabulary.h"
#include "kiln/property.h"
#include "kiln/widgets.h"

namespace Effect {

// A box that the layout does not have is skipped.
void followValue(Kiln::XUL::Toggle* box, const Kiln::ModelSelectionChange& change, Name onValue);

// Changes of other options than the on value are ignored.
void followAvailability(Kiln::XUL::Toggle* box, const Kiln::ModelEnableChange& change, Name onValue);

}  // namespace Effect
