// What the dialog for several overlays saves and reads back, as text.
//
//   MultipleOverlayDetails   LABEL;RULE$ for each of the eight slots in order, a free slot as ;$
//   OverlaySourceFileName    PATH;RULE$ for each slot that has both an overlay and a rule
//
// An overlay's label is its file name, by which the store knows it. Nothing is quoted: a label with ";" or "$" in it
// does not come back.
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

// `pathOf` gives the path of the overlay in a slot.
std::u16string sourceFilesOf(const SlotContents& slots, const std::function<std::u16string(std::size_t slot)>& pathOf);

// The slots that a value of MultipleOverlayDetails describes, whoever wrote it; nothing where the defaults take its
// place: for an empty value, and where `isThere` is false of one of its labels. It is asked once a label.
//
// An entry without ";" leaves its slot free, and so does an empty label, but for the first slot, which then has
// `defaultLabel` on all pages. Rules are taken as they are. Entries beyond the eighth have no slot; only their labels
// count.
std::optional<SlotContents> readDetails(std::u16string_view value, std::u16string_view defaultLabel,
                                        const std::function<bool(std::u16string_view label)>& isThere);

}  // namespace Effect
