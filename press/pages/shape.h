#pragma once

#include "press/marks/place.h"
#include "press/pdf/document.h"

namespace Press {

// A page's geometry for display. The visible area is the crop box clipped to the media box.
struct PageShape : PageFrame {
  Box reach;  // covers everything that any reader shows of the page, with a margin; in the page's units
};

// Reads boxes and rotation tolerantly, like PDF readers: normalises swapped corners and ignores invalid values.
PageShape shapeOf(const PageEntry& entry);

}  // namespace Press
