#pragma once

#include "press/job/effects.h"
#include "press/pages/shape.h"

#include <string>

namespace Press {

// Whether the displayed page is A3 (297 x 420 mm) or Ledger (11 x 17 in), in portrait or landscape.
bool isA3OrLedger(const PageShape& shape);

// The `cm` operator that mirrors and rotates a page within its visible box, with a line break; empty when there is
// nothing to do.
std::string placement(const PageShape& shape, const Effects& effects);

}  // namespace Press
