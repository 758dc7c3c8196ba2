// The values that the watermark editor accepts and writes, independent of its widgets.
#pragma once

#include "effect/watermark/record.h"
#include "formats/colour.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Effect {

inline constexpr Name black = u"#000000";
inline constexpr Name leastFontSize = u"6";

// The maximum number of UTF-16 units of a watermark's text and of its name.
inline constexpr std::int32_t mostTextUnits = 63;

// The text truncated to mostTextUnits, never within a surrogate pair.
std::u16string_view cutToBox(std::u16string_view text);

// Degrees from -90 to 90; nothing for invalid text. Empty text and "-" alone, which start a number, mean 0.
std::optional<std::int32_t> angleOf(std::u16string_view text);

// Per cent; nothing unless the text is a number from 0 to 100. Empty text means 0.
std::optional<std::int32_t> percentOf(std::u16string_view text);

// Whether the integer at the start of the text is a size of 6 to 300 points.
bool isFontSize(std::u16string_view text);

// Two letters: "U", "C" or "L" for upper, centre, lower, then "L", "C" or "R" for left, centre, right.
bool isPosition(std::u16string_view code);

// A record of the fields that the editor shows, with values of `record` where they are valid, since files may be
// written by others, and values of the NoneRecord elsewhere. The text size is not validated here: the editor replaces
// an invalid one.
Node shownValues(Kiln::Host& host, Kiln::Dom::INode& record);

// Sets the fields of `record` back to those of `original` that the editor cannot show, and shows something else for:
// what the user does not change stays as it was.
void keepWhatCannotBeShown(Kiln::Host& host, Kiln::Dom::INode& original, Kiln::Dom::INode& record);

}  // namespace Effect
