// How names and texts that XML cannot carry are written: each such 16-bit unit as _xHHHH_, its four hexadecimal digits.
//
// So that decoding is exact, every underscore in front of an x is written like that as well. An empty name is _x_.
#pragma once

#include <string>
#include <string_view>

namespace Refhost {

// An element's name: of letters, digits, "_", "." and "-" of ASCII, and beginning with a letter or "_".
std::string escapedName(std::u16string_view name);

// A text without what XML forbids everywhere: control characters, unpaired surrogates, U+FFFE and U+FFFF. Markup is
// left to the writer. With `edges`, white space at its beginning and its end is escaped too.
std::u16string escapedText(std::u16string_view text, bool edges);

// Undoes both. What is no escape stays as it is.
std::u16string unescapedName(std::u16string_view name);
std::u16string unescapedText(std::u16string_view text);

// Whether XML forbids the code point in texts; an unpaired surrogate is its own number.
bool isForbidden(char32_t codePoint);

// Whether XML takes the name as it is. No colon: prefixes are apart.
bool isPlainName(std::u16string_view name);

// Space, tab, line feed and carriage return, for XML.
inline constexpr std::string_view xmlSpace = " \t\n\r";
inline constexpr std::u16string_view wideXmlSpace = u" \t\n\r";

}  // namespace Refhost
