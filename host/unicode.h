// UTF-8 and UTF-16, each into the other.
//
// An unpaired surrogate travels through UTF-8 as the three bytes that its number would have, and comes back as it was,
// so that no text of a plug-in is changed on its way through a narrow one.
#pragma once

#include <string>
#include <string_view>

namespace Refhost {

// What is no UTF-8 becomes U+FFFD.
std::u16string toWide(std::string_view utf8);
std::string toNarrow(std::u16string_view utf16);

// The next code point of `utf16` at `index`, which is moved behind it; an unpaired surrogate is its own number.
char32_t nextCodePoint(std::u16string_view utf16, std::size_t& index);

void appendUtf8(std::string& text, char32_t codePoint);

}  // namespace Refhost
