// The state of widgets that a layout may not have.
#pragma once

#include "kiln/widgets.h"

namespace Effect {

// An empty pointer is skipped.
void enableIfThere(const Kiln::SmartPtr<Kiln::XUL::Widget>& widget);
void disableIfThere(const Kiln::SmartPtr<Kiln::XUL::Widget>& widget);

// Unchecks the box and keeps the user from it.
void clearIfThere(const Kiln::SmartPtr<Kiln::XUL::Toggle>& box);

}  // namespace Effect
