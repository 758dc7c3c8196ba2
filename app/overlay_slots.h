// Which slot of the dialog for several overlays each overlay goes to.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace App {

// An overlay on pages: "All", "Even", "Odd", or a list such as "1,3,5-9".
struct PlacedOverlay {
  std::string overlay;
  std::string pages;
};

// The first slot takes all, the even or the odd pages, the second the even or the odd ones, but not those of the first;
// the other six take lists. A slot without an overlay is free.
inline constexpr std::size_t overlaySlots = 8;
inline constexpr std::size_t firstListSlot = 2;
using OverlaySlots = std::array<PlacedOverlay, overlaySlots>;

// Overlays on all, even and odd pages lie below those on lists; within each of the two kinds the order stays. Throws
// std::runtime_error, one sentence, when the slots cannot hold them.
OverlaySlots slotsFor(const std::vector<PlacedOverlay>& overlays);

}  // namespace App
