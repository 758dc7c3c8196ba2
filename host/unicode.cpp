#include "host/unicode.h"

namespace Refhost {
namespace {

constexpr bool isHigh(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLow(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

void appendUtf16(std::u16string& text, char32_t codePoint) {
  if (codePoint < 0x10000) {
    text += static_cast<char16_t>(codePoint);
  } else {
    text += static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
    text += static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
  }
}

// The code point at `index`, which is advanced past it, or by one byte when invalid.
char32_t decode(std::string_view utf8, std::size_t& index) {
  const auto first = static_cast<unsigned char>(utf8[index++]);
  if (first < 0x80) return first;
  const std::size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
  if (first < 0xC2 || first > 0xF4 || index + more > utf8.size()) return 0xFFFD;
  char32_t value = first & (0x3Fu >> more);
  for (std::size_t i = 0; i < more; ++i) {
    const auto byte = static_cast<unsigned char>(utf8[index + i]);
    if ((byte & 0xC0) != 0x80) return 0xFFFD;
    value = (value << 6) | (byte & 0x3F);
  }
  constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
  if (value < smallest[more] || value > 0x10FFFF) return 0xFFFD;
  index += more;
  return value;
}

}  // namespace

std::u16string toWide(std::string_view utf8) {
  std::u16string wide;
  wide.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) appendUtf16(wide, decode(utf8, i));
  return wide;
}

char32_t nextCodePoint(std::u16string_view utf16, std::size_t& index) {
  const char16_t first = utf16[index++];
  if (!isHigh(first) || index == utf16.size() || !isLow(utf16[index])) return first;
  return 0x10000 + ((char32_t{first} - 0xD800) << 10) + (char32_t{utf16[index++]} - 0xDC00);
}

void appendUtf8(std::string& text, char32_t codePoint) {
  const auto byte = [&text](char32_t value) { text += static_cast<char>(static_cast<unsigned char>(value)); };
  if (codePoint < 0x80) {
    byte(codePoint);
    return;
  }
  if (codePoint < 0x800) {
    byte(0xC0 | (codePoint >> 6));
  } else {
    if (codePoint < 0x10000) {
      byte(0xE0 | (codePoint >> 12));
    } else {
      byte(0xF0 | (codePoint >> 18));
      byte(0x80 | ((codePoint >> 12) & 0x3F));
    }
    byte(0x80 | ((codePoint >> 6) & 0x3F));
  }
  byte(0x80 | (codePoint & 0x3F));
}

std::string toNarrow(std::u16string_view utf16) {
  std::string narrow;
  narrow.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size();) appendUtf8(narrow, nextCodePoint(utf16, i));
  return narrow;
}

}  // namespace Refhost
