// Escaping of names and texts that XML cannot represent: each such 16-bit unit as _xHHHH_, with four hexadecimal
// digits.
//
// So that decoding is exact, an underscore before an x is escaped too. An empty name is _x_.
#pragma once

#include <string>
#include <string_view>

namespace Refhost {

// An element's name: ASCII letters, digits, "_", "." and "-", starting with a letter or "_".
std::string escapedName(std::u16string_view name);

// A text without the characters that XML forbids: control characters, unpaired surrogates, U+FFFE and U+FFFF. The
// writer escapes markup. With `edges`, leading and trailing white space is escaped too.
std::u16string escapedText(std::u16string_view text, bool edges);

// Reverse both. Invalid escapes are left unchanged.
std::u16string unescapedName(std::u16string_view name);
std::u16string unescapedText(std::u16string_view text);

// Whether XML forbids the code point in texts; an unpaired surrogate is passed as its own code point.
bool isForbidden(char32_t codePoint);

// Whether XML accepts the name unescaped. Excludes colons: prefixes are separate.
bool isPlainName(std::u16string_view name);

// White space in XML: space, tab, line feed and carriage return.
inline constexpr std::string_view xmlSpace = " \t\n\r";
inline constexpr std::u16string_view wideXmlSpace = u" \t\n\r";

}  // namespace Refhost
