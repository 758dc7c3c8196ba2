// Texts of others, such as names in files, in what is written or shown to people.
//
// A control character could move the cursor, start a sequence that a terminal obeys, or begin a line that looks like
// another message; a directional one could show a text in another order than it has.
#pragma once

#include "formats/text.h"

#include <string>
#include <string_view>

namespace Formats {

constexpr bool isLineBreak(char32_t code) {
  return (code >= 0x0A && code <= 0x0D) || code == 0x85 || code == 0x2028 || code == 0x2029;
}

constexpr bool isControl(char32_t code) { return code < 0x20 || (code >= 0x7F && code <= 0x9F); }

// Embeddings, overrides and isolates, and the deprecated characters after them. The directional marks are none of
// these: they are as invisible, but reorder nothing that stands apart from them.
constexpr bool isDirectional(char32_t code) {
  return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x206F);
}

// The character that stands for `code` in a message: a space for a tab or the end of a line, U+FFFD for another one
// that would not be shown but obeyed, and itself otherwise.
constexpr char32_t printable(char32_t code) {
  if (code == '\t' || isLineBreak(code)) return U' ';
  return isControl(code) || isDirectional(code) || isSurrogate(code) ? replacementCharacter : code;
}

// The text on one line, as valid UTF-8.
inline std::string printable(std::string_view utf8) {
  std::string text;
  text.reserve(utf8.size());
  while (!utf8.empty()) appendUtf8(text, printable(takeCodePoint(utf8)));
  return text;
}

inline std::u16string printable(std::u16string_view utf16) {
  std::u16string text(utf16);
  for (std::size_t i = 0; i < utf16.size();) {
    const std::size_t start = i;
    const char32_t code = nextCodePoint(utf16, i);
    // What is replaced is one unit, and so is what replaces it.
    if (code < 0x10000) text[start] = static_cast<char16_t>(printable(code));
  }
  return text;
}

}  // namespace Formats
