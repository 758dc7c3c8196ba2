// The text formats that the dialog for several overlays saves.
//
//   MultipleOverlayDetails   LABEL;RULE$ for each of the eight slots in order, a free slot as ;$
//   OverlaySourceFileName    PATH;RULE$ for each slot that has both an overlay and a rule
//
// An overlay's label is its file name, which identifies it in the store. Nothing is quoted: a label with ";" or "$"
// does not survive a round trip.
#pragma once

#include "effect/overlay/page_rules.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Effect {

// Both empty for a free slot.
struct SlotContent {
  std::u16string label;
  std::u16string pages;

  friend bool operator==(const SlotContent&, const SlotContent&) = default;
};

using SlotContents = std::array<SlotContent, slotCount>;

std::u16string detailsOf(const SlotContents& slots);

// `pathOf` returns the path of the overlay in a slot.
std::u16string sourceFilesOf(const SlotContents& slots, const std::function<std::u16string(std::size_t slot)>& pathOf);

// Parses a value of MultipleOverlayDetails. Returns nothing when the defaults apply: for an empty value, and when
// `isThere` is false for one of its labels. Calls `isThere` once per label.
//
// An entry without ";" or with an empty label leaves its slot free; an empty label in the first slot means
// `defaultLabel` on all pages. Rules are not validated. Of entries beyond the eighth only the labels are checked.
std::optional<SlotContents> readDetails(std::u16string_view value, std::u16string_view defaultLabel,
                                        const std::function<bool(std::u16string_view label)>& isThere);

}  // namespace Effect
