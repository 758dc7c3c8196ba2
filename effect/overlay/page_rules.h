// On which pages the overlay of a slot is printed. Slots are counted from 0 here; people count them from 1.
//
// The first two slots are the masters: the first is for all, the even or the odd pages, the second for the even or the
// odd ones. The others have a list that the user types, such as 1,3,5-9.
#pragma once

#include "effect/vocabulary.h"

#include <cstddef>
#include <string_view>

namespace Effect {

inline constexpr std::size_t slotCount = 8;
inline constexpr std::size_t masterSlots = 2;

// The rule of an overlay that is added to a free slot; an empty list for those that have one.
Name firstRule(std::size_t slot);

// Whether the text has nothing but digits, commas and hyphens. What they mean is the print side's to say.
bool isPageList(std::u16string_view text);

// The rule of the second master beside the first one's: what is left where the first has the even or the odd pages, so
// that no page gets both; else its own. While one of them is free, only equal rules are kept apart.
std::u16string_view ruleBeside(std::u16string_view first, std::u16string_view second, bool areBothOccupied);

}  // namespace Effect
