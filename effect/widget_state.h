// Helpers for widgets that a layout may not have.
#pragma once

#include "kiln/widgets.h"

namespace Effect {

// A null pointer is ignored.
void enableIfThere(const Kiln::SmartPtr<Kiln::XUL::Widget>& widget);
void disableIfThere(const Kiln::SmartPtr<Kiln::XUL::Widget>& widget);

// Unchecks and disables the box.
void clearIfThere(const Kiln::SmartPtr<Kiln::XUL::Toggle>& box);

}  // namespace Effect
