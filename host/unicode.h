// Conversion between UTF-8 and UTF-16.
//
// An unpaired surrogate is encoded in UTF-8 as the three bytes of its code point and decoded back, so that every text
// of a plug-in survives a round trip.
#pragma once

#include <string>
#include <string_view>

namespace Refhost {

// Invalid sequences become U+FFFD.
std::u16string toWide(std::string_view utf8);
std::string toNarrow(std::u16string_view utf16);

// The code point of `utf16` at `index`, which is advanced past it; an unpaired surrogate is returned as its own code
// point.
char32_t nextCodePoint(std::u16string_view utf16, std::size_t& index);

void appendUtf8(std::string& text, char32_t codePoint);

}  // namespace Refhost
