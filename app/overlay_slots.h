// Assigns overlays to the slots of the dialog for several overlays.
#pragma once

#include "formats/page_rules.h"

#include <array>
#include <string>
#include <vector>

namespace App {

// An overlay and its pages: "All", "Even", "Odd", or a list such as "1,3,5-9".
struct PlacedOverlay {
  std::string overlay;
  std::string pages;
};

// The first slot takes all, even or odd pages, the second even or odd ones other than the first's; the remaining six
// take lists. A slot without an overlay is free.
using OverlaySlots = std::array<PlacedOverlay, Formats::slotCount>;

// Overlays on all, even and odd pages go below those on lists; both kinds keep their order. Throws std::runtime_error,
// one sentence, when there are too few slots.
OverlaySlots slotsFor(const std::vector<PlacedOverlay>& overlays);

}  // namespace App
