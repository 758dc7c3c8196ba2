#include "effect/sentence.h"

#include <algorithm>
#include <cstddef>

namespace Effect {
namespace {

constexpr char32_t replacement = 0xFFFD;

// The length of the UTF-8 sequence that starts with this byte; 0 for an invalid first byte.
std::size_t lengthOf(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

// Removes and returns the first character of `utf8`.
char32_t takeCharacter(std::string_view& utf8) {
  const auto lead = static_cast<unsigned char>(utf8.front());
  const std::size_t length = lengthOf(lead);
  char32_t character = length <= 1 ? lead : lead & (0xFFU >> (length + 1));
  const std::string_view rest = utf8.substr(1, length == 0 ? 0 : length - 1);
  const bool isWhole = length != 0 && rest.size() == length - 1 && std::all_of(rest.begin(), rest.end(), [](char byte) {
                         return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
                       });
  utf8.remove_prefix(isWhole ? length : 1);
  for (const char byte : rest) character = character << 6 | (static_cast<unsigned char>(byte) & 0x3FU);
  const bool isOverlong = (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
  return isWhole && !isOverlong && character <= 0x10FFFF ? character : replacement;
}

void append(std::string& utf8, char32_t character) {
  const auto byte = [&utf8](char32_t bits) { utf8 += static_cast<char>(static_cast<unsigned char>(bits)); };
  if (character < 0x80) return byte(character);
  if (character < 0x800) {
    byte(0xC0 | character >> 6);
  } else {
    if (character < 0x10000) {
      byte(0xE0 | character >> 12);
    } else {
      byte(0xF0 | character >> 18);
      byte(0x80 | (character >> 12 & 0x3F));
    }
    byte(0x80 | (character >> 6 & 0x3F));
  }
  byte(0x80 | (character & 0x3F));
}

}  // namespace

std::u16string wideText(std::string_view utf8) {
  std::u16string wide;
  wide.reserve(utf8.size());
  while (!utf8.empty()) {
    const char32_t character = takeCharacter(utf8);
    if (character < 0x10000) {
      wide += static_cast<char16_t>(character);
    } else {
      wide += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
      wide += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
    }
  }
  return wide;
}

std::string narrowText(std::u16string_view utf16) {
  std::string utf8;
  while (!utf16.empty()) {
    char32_t character = utf16.front();
    const bool isHigh = character >= 0xD800 && character < 0xDC00;
    const bool isPair = isHigh && utf16.size() > 1 && utf16[1] >= 0xDC00 && utf16[1] < 0xE000;
    if (isPair)
      character = 0x10000 + ((character - 0xD800) << 10) + (utf16[1] - char32_t{0xDC00});
    else if (character >= 0xD800 && character < 0xE000)
      character = replacement;
    utf16.remove_prefix(isPair ? 2 : 1);
    append(utf8, character);
  }
  return utf8;
}

std::string sentenceOf(const Kiln::Exception& problem) {
  std::string sentence = problem.what();
  if (!sentence.ends_with('.')) sentence += '.';
  return sentence;
}

std::string sentenceOfBlocking(const Kiln::Exception& problem) {
  return sentenceOf(problem) + " It is not written over: move it elsewhere, and open the preferences again.";
}

}  // namespace Effect
