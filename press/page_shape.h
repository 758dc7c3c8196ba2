#pragma once

#include <string>

#include "press/box.h"
#include "press/document.h"
#include "press/effects.h"

namespace Press {

/// How a page lies before the eye.
struct PageShape {
  Box visible;      ///< What is seen: the part of the crop box that lies inside the media box.
  Box reach;        ///< Covers all that any reader shows of the page, with a margin.
  int turn = 0;     ///< Degrees clockwise by which the page is turned to be seen: 0, 90, 180 or 270.
  double unit = 1;  ///< Points to a unit of the page.
};

/// Reads boxes and rotation as readers do: swapped corners are put right, and what makes no sense is taken as absent.
PageShape shapeOf(const PageEntry& entry);

/// Whether the page as seen is A3 (297 x 420 mm) or Ledger (11 x 17 in) paper, upright or on its side.
bool isA3OrLedger(const PageShape& shape);

/// The operator that mirrors and turns a page within its visible box, with a line end, or nothing when the page stays
/// as it lies.
std::string placement(const PageShape& shape, const Effects& effects);

}  // namespace Press
