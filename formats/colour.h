// Colours as text.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace Formats {

inline constexpr std::u16string_view hexadecimalDigits = u"0123456789ABCDEF";

// The digit's place among the digits; their number for another unit.
inline std::uint32_t hexadecimalValue(char16_t digit) {
  const bool isLower = digit >= u'a' && digit <= u'f';
  return static_cast<std::uint32_t>(
      hexadecimalDigits.find(isLower ? static_cast<char16_t>(digit - u'a' + u'A') : digit));
}

// "#" and six hexadecimal digits.
inline bool isColour(std::u16string_view text) {
  if (text.size() != 7 || text.front() != u'#') return false;
  return std::all_of(text.begin() + 1, text.end(),
                     [](char16_t unit) { return hexadecimalValue(unit) < hexadecimalDigits.size(); });
}

// Convert "#RRGGBB" to 0xRRGGBB, and back in upper case. The text must be valid.
inline std::uint32_t colourOf(std::u16string_view text) {
  std::uint32_t colour = 0;
  for (const char16_t digit : text.substr(1)) colour = colour << 4 | hexadecimalValue(digit);
  return colour;
}

inline std::u16string colourText(std::uint32_t colour) {
  std::u16string text = u"#";
  for (int shift = 20; shift >= 0; shift -= 4) text += hexadecimalDigits[colour >> shift & 0xF];
  return text;
}

}  // namespace Formats
