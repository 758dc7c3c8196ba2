#include "press/text/unicode.h"

namespace Press {
namespace {

constexpr char32_t replacement = 0xFFFD;

// The length of a UTF-8 sequence with this first byte; 0 when invalid.
std::size_t lengthFrom(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first < 0xE0) return 2;
  if (first >= 0xE0 && first < 0xF0) return 3;
  if (first >= 0xF0 && first < 0xF5) return 4;
  return 0;
}

bool isCharacter(char32_t code, std::size_t length) {
  constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
  return code >= least[length] && code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF);
}

}  // namespace

std::u32string charactersOf(std::string_view utf8) {
  std::u32string characters;
  for (std::size_t start = 0; start < utf8.size();) {
    const unsigned char first = static_cast<unsigned char>(utf8[start]);
    const std::size_t length = lengthFrom(first);
    char32_t code = length < 2 ? first : first & (0x7Fu >> length);
    std::size_t read = 1;
    for (; read < length && start + read < utf8.size(); ++read) {
      const unsigned char next = static_cast<unsigned char>(utf8[start + read]);
      if ((next & 0xC0u) != 0x80u) break;
      code = code << 6 | (next & 0x3Fu);
    }
    characters += length > 0 && read == length && isCharacter(code, length) ? code : replacement;
    start += read;
  }
  return characters;
}

std::string utf8Of(char32_t character) {
  const auto byte = [](char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
  const auto tail = [&](int shift) { return byte(0x80u | (character >> shift & 0x3Fu)); };
  if (character < 0x80) return {byte(character)};
  if (character < 0x800) return {byte(0xC0u | character >> 6), tail(0)};
  if (character < 0x10000) return {byte(0xE0u | character >> 12), tail(6), tail(0)};
  return {byte(0xF0u | character >> 18), tail(12), tail(6), tail(0)};
}

}  // namespace Press
