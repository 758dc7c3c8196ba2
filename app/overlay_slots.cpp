#include "app/overlay_slots.h"

#include <algorithm>
#include <stdexcept>

namespace App {
namespace {

bool isParity(const PlacedOverlay& placed) { return placed.pages == "Even" || placed.pages == "Odd"; }

// Those without a free slot of their kind become equivalent lists.
std::vector<PlacedOverlay> takeMasters(std::vector<PlacedOverlay>& overlays) {
  std::vector<PlacedOverlay> parities;
  std::ranges::copy_if(overlays, std::back_inserter(parities), isParity);
  if (parities.size() > 2 || (parities.size() == 2 && parities[0].pages == parities[1].pages))
    throw std::runtime_error(
        "One overlay can be on the even pages and one on the odd ones; name the pages of others by their numbers.");
  std::erase_if(overlays, isParity);

  std::vector<PlacedOverlay> masters;
  const auto all = std::ranges::find(overlays, "All", &PlacedOverlay::pages);
  if (parities.size() < 2 && all != overlays.end()) {
    masters.push_back(*all);
    overlays.erase(all);
  }
  masters.insert(masters.end(), parities.begin(), parities.end());
  for (PlacedOverlay& placed : overlays)
    if (placed.pages == "All") placed.pages = "1-";
  return masters;
}

}  // namespace

OverlaySlots slotsFor(const std::vector<PlacedOverlay>& overlays) {
  std::vector<PlacedOverlay> lists = overlays;
  const std::vector<PlacedOverlay> masters = takeMasters(lists);
  if (lists.size() > overlaySlots - firstListSlot)
    throw std::runtime_error("At most six overlays can be on lists of pages; " + std::to_string(lists.size()) +
                             " are.");
  OverlaySlots slots;
  std::ranges::copy(masters, slots.begin());
  std::ranges::copy(lists, slots.begin() + firstListSlot);
  return slots;
}

}  // namespace App
