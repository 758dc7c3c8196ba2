// The values that the watermark editor takes and writes, apart from its widgets.
#pragma once

#include "effect/watermark/record.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Effect {

inline constexpr Name black = u"#000000";
inline constexpr Name leastFontSize = u"6";

// The most UTF-16 units of a watermark's text and of its name.
inline constexpr std::int32_t mostTextUnits = 63;

// The text cut to mostTextUnits, never between the two units of one character.
std::u16string_view cutToBox(std::u16string_view text);

// "#" and six hexadecimal digits.
bool isColour(std::u16string_view text);

// The colour (0xRRGGBB) of a text that is one; and its text, in upper case.
std::uint32_t colourOf(std::u16string_view text);
std::u16string colourText(std::uint32_t colour);

// Degrees from -90 to 90; nothing for a text that is none of them. No text and a sole "-" are the beginnings of a
// number, and mean 0.
std::optional<std::int32_t> angleOf(std::u16string_view text);

// Per cent; nothing for a text that is no number from 0 to 100. No text means 0.
std::optional<std::int32_t> percentOf(std::u16string_view text);

// Whether the whole number that the text begins with is a size of 6 to 300 points.
bool isFontSize(std::u16string_view text);

// Two letters: "U", "C" or "L" for upper, centre, lower, then "L", "C" or "R" for left, centre, right.
bool isPosition(std::u16string_view code);

// A record of the fields that the editor shows, each as `record` has it where that is something that the editor can
// show. Any other is the NoneRecord's: files also come from other hands. The size of the text is taken as it is: the
// editor itself replaces one that is none.
Node shownValues(Kiln::Host& host, Kiln::Dom::INode& record);

}  // namespace Effect
