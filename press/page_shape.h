#pragma once

#include <string>

#include "press/document.h"
#include "press/effects.h"
#include "press/mark_place.h"

namespace Press {

/// How a page lies before the eye. What is visible is the part of the crop box that lies inside the media box.
struct PageShape : PageFrame {
  Box reach;  ///< Covers all that any reader shows of the page, with a margin; in the page's units.
};

/// Reads boxes and rotation as readers do: swapped corners are put right, and what makes no sense is taken as absent.
PageShape shapeOf(const PageEntry& entry);

/// Whether the page as seen is A3 (297 x 420 mm) or Ledger (11 x 17 in) paper, upright or on its side.
bool isA3OrLedger(const PageShape& shape);

/// The operator that mirrors and turns a page within its visible box, with a line end, or nothing when the page stays
/// as it lies.
std::string placement(const PageShape& shape, const Effects& effects);

}  // namespace Press
