#include "app/overlay_slots.h"

#include "formats/sentences.h"

#include <algorithm>
#include <stdexcept>

namespace App {
namespace {

namespace Value = Formats::Value;

bool isFor(const PlacedOverlay& placed, Formats::Name rule) { return Formats::isName(placed.pages, rule); }

bool isParity(const PlacedOverlay& placed) { return isFor(placed, Value::evenPages) || isFor(placed, Value::oddPages); }

// Those without a free slot of their kind become equivalent lists.
std::vector<PlacedOverlay> takeMasters(std::vector<PlacedOverlay>& overlays) {
  std::vector<PlacedOverlay> parities;
  std::ranges::copy_if(overlays, std::back_inserter(parities), isParity);
  if (parities.size() > 2 || (parities.size() == 2 && parities[0].pages == parities[1].pages))
    throw std::runtime_error(Formats::sentence(
        "One overlay can be on the even pages and one on the odd ones; name the pages of others by their numbers."));
  std::erase_if(overlays, isParity);

  std::vector<PlacedOverlay> masters;
  const auto all = std::ranges::find_if(overlays, [](const auto& placed) { return isFor(placed, Value::allPages); });
  if (parities.size() < 2 && all != overlays.end()) {
    masters.push_back(*all);
    overlays.erase(all);
  }
  masters.insert(masters.end(), parities.begin(), parities.end());
  for (PlacedOverlay& placed : overlays)
    if (isFor(placed, Value::allPages)) placed.pages = "1-";
  return masters;
}

}  // namespace

OverlaySlots slotsFor(const std::vector<PlacedOverlay>& overlays) {
  std::vector<PlacedOverlay> lists = overlays;
  const std::vector<PlacedOverlay> masters = takeMasters(lists);
  if (lists.size() > Formats::slotCount - Formats::masterSlots)
    throw std::runtime_error(
        Formats::sentence("At most six overlays can be on lists of pages; {1} are.", lists.size()));
  OverlaySlots slots;
  std::ranges::copy(masters, slots.begin());
  std::ranges::copy(lists, slots.begin() + Formats::masterSlots);
  return slots;
}

}  // namespace App
