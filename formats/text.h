// Conversion between UTF-8 and UTF-16.
//
// An unpaired surrogate is encoded in UTF-8 as the three bytes of its code point and decoded back, so that every text
// of a plug-in survives a round trip.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace Formats {

inline constexpr char32_t replacementCharacter = 0xFFFD;

constexpr bool isHighSurrogate(char32_t code) { return code >= 0xD800 && code <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t code) { return code >= 0xDC00 && code <= 0xDFFF; }
constexpr bool isSurrogate(char32_t code) { return code >= 0xD800 && code <= 0xDFFF; }

// Removes and returns the first code point of `utf8`, which is not empty; U+FFFD for an invalid sequence. Of an
// incomplete one it removes the first byte alone.
inline char32_t takeCodePoint(std::string_view& utf8) {
  const auto lead = static_cast<unsigned char>(utf8.front());
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  const std::string_view rest = utf8.substr(1, length == 0 ? 0 : length - 1);
  const bool isWhole = length != 0 && rest.size() == length - 1 && std::all_of(rest.begin(), rest.end(), [](char byte) {
                         return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
                       });
  utf8.remove_prefix(isWhole ? length : 1);
  if (!isWhole) return replacementCharacter;
  char32_t code = length == 1 ? lead : lead & (0xFFU >> (length + 1));
  for (const char byte : rest) code = code << 6 | (static_cast<unsigned char>(byte) & 0x3FU);
  const bool isOverlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  return isOverlong || code > 0x10FFFF ? replacementCharacter : code;
}

inline void appendUtf8(std::string& text, char32_t code) {
  const auto byte = [&text](char32_t bits) { text += static_cast<char>(static_cast<unsigned char>(bits)); };
  if (code < 0x80) return byte(code);
  if (code < 0x800) {
    byte(0xC0 | code >> 6);
  } else {
    if (code < 0x10000) {
      byte(0xE0 | code >> 12);
    } else {
      byte(0xF0 | code >> 18);
      byte(0x80 | (code >> 12 & 0x3F));
    }
    byte(0x80 | (code >> 6 & 0x3F));
  }
  byte(0x80 | (code & 0x3F));
}

// The code point of `utf16` at `index`, which is advanced past it; an unpaired surrogate is returned as its own code
// point.
inline char32_t nextCodePoint(std::u16string_view utf16, std::size_t& index) {
  const char16_t first = utf16[index++];
  if (!isHighSurrogate(first) || index == utf16.size() || !isLowSurrogate(utf16[index])) return first;
  return 0x10000 + ((char32_t{first} & 0x3FF) << 10) + (char32_t{utf16[index++]} & 0x3FF);
}

// Invalid sequences become U+FFFD.
inline std::u16string toUtf16(std::string_view utf8) {
  std::u16string text;
  text.reserve(utf8.size());
  while (!utf8.empty()) {
    const char32_t code = takeCodePoint(utf8);
    if (code < 0x10000) {
      text += static_cast<char16_t>(code);
    } else {
      text += static_cast<char16_t>(0xD7C0 + (code >> 10));
      text += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
    }
  }
  return text;
}

inline std::string toUtf8(std::u16string_view utf16) {
  std::string text;
  text.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size();) appendUtf8(text, nextCodePoint(utf16, i));
  return text;
}

// The same for messages to people, which are valid UTF-8: an unpaired surrogate becomes U+FFFD.
inline std::string toValidUtf8(std::u16string_view utf16) {
  std::string text;
  text.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size();) {
    const char32_t code = nextCodePoint(utf16, i);
    appendUtf8(text, isSurrogate(code) ? replacementCharacter : code);
  }
  return text;
}

// The characters of a text to print or show; U+FFFD also for a surrogate.
inline std::u32string toUtf32(std::string_view utf8) {
  std::u32string text;
  while (!utf8.empty()) {
    const char32_t code = takeCodePoint(utf8);
    text += isSurrogate(code) ? replacementCharacter : code;
  }
  return text;
}

inline std::string toUtf8(char32_t code) {
  std::string text;
  appendUtf8(text, code);
  return text;
}

}  // namespace Formats
