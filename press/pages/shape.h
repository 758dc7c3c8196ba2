#pragma once

#include "press/job/effects.h"
#include "press/marks/place.h"
#include "press/pdf/document.h"

#include <string>

namespace Press {

// A page's geometry for display. The visible area is the crop box clipped to the media box.
struct PageShape : PageFrame {
  Box reach;  // covers everything that any reader shows of the page, with a margin; in the page's units
};

// Reads boxes and rotation tolerantly, like PDF readers: normalises swapped corners and ignores invalid values.
PageShape shapeOf(const PageEntry& entry);

// Whether the displayed page is A3 (297 x 420 mm) or Ledger (11 x 17 in), in portrait or landscape.
bool isA3OrLedger(const PageShape& shape);

// The `cm` operator that mirrors and rotates a page within its visible box, with a line break; empty when there is
// nothing to do.
std::string placement(const PageShape& shape, const Effects& effects);

}  // namespace Press
