#include "app/overlay_slots.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

// "SLOT=OVERLAY:PAGES" of each occupied slot, numbered from 1.
std::string slots(const std::vector<App::PlacedOverlay>& overlays) {
  std::string text;
  const auto taken = App::slotsFor(overlays);
  for (std::size_t slot = 0; slot < taken.size(); ++slot)
    if (!taken[slot].overlay.empty())
      text +=
          (text.empty() ? "" : " ") + std::to_string(slot + 1) + '=' + taken[slot].overlay + ':' + taken[slot].pages;
  return text;
}

TEST(OverlaySlots, WholeAndHalvesHaveTheFirstTwo) {
  EXPECT_EQ(slots({{"a", "All"}}), "1=a:All");
  EXPECT_EQ(slots({{"a", "Odd"}}), "1=a:Odd");
  EXPECT_EQ(slots({{"a", "Odd"}, {"b", "Even"}}), "1=a:Odd 2=b:Even");
  EXPECT_EQ(slots({{"a", "Even"}, {"b", "All"}}), "1=b:All 2=a:Even");
}

TEST(OverlaySlots, ListsHaveTheOthersInTheirOrder) {
  EXPECT_EQ(slots({{"a", "1"}, {"b", "2-"}}), "3=a:1 4=b:2-");
  EXPECT_EQ(slots({{"a", "1"}, {"b", "All"}, {"c", "3"}}), "1=b:All 3=a:1 4=c:3");
}

TEST(OverlaySlots, WholeThatHasNoPlaceIsAList) {
  EXPECT_EQ(slots({{"a", "All"}, {"b", "All"}}), "1=a:All 3=b:1-");
  EXPECT_EQ(slots({{"a", "Even"}, {"b", "All"}, {"c", "Odd"}}), "1=a:Even 2=c:Odd 3=b:1-");
}

TEST(OverlaySlots, RefuseWhatTheyCannotHold) {
  EXPECT_THROW(slots({{"a", "Even"}, {"b", "Even"}}), std::runtime_error);
  EXPECT_THROW(slots({{"a", "Even"}, {"b", "Odd"}, {"c", "Odd"}}), std::runtime_error);
  const App::PlacedOverlay list{"a", "1"};
  EXPECT_EQ(slots({list, list, list, list, list, list}), "3=a:1 4=a:1 5=a:1 6=a:1 7=a:1 8=a:1");
  EXPECT_THROW(slots({list, list, list, list, list, list, list}), std::runtime_error);
}

}  // namespace
