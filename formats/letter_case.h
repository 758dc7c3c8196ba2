// Case of letters, for the order of lists and for names of files.
#pragma once

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace Formats {

constexpr bool isBetween(char16_t unit, char16_t first, char16_t last) { return unit >= first && unit <= last; }

// Blocks in which upper and lower case alternate, with the upper case at even or at odd code points.
constexpr bool isAlternatingCapital(char16_t unit) {
  const bool isEven = unit % 2 == 0;
  if (isBetween(unit, 0x0100, 0x0137) || isBetween(unit, 0x014A, 0x0177)) return isEven && unit != 0x0130;
  if (isBetween(unit, 0x0139, 0x0148) || isBetween(unit, 0x0179, 0x017E)) return !isEven;
  if (isBetween(unit, 0x01CD, 0x01DC) || isBetween(unit, 0x04C1, 0x04CE)) return !isEven;
  constexpr std::pair<char16_t, char16_t> evenCapitals[] = {
      {0x01DE, 0x01EF}, {0x01F8, 0x021F}, {0x0222, 0x0233}, {0x0246, 0x024F}, {0x03D8, 0x03EF},
      {0x0460, 0x0481}, {0x048A, 0x04BF}, {0x04D0, 0x052F}, {0x1E00, 0x1E95}, {0x1EA0, 0x1EFF}};
  return isEven && std::any_of(std::begin(evenCapitals), std::end(evenCapitals),
                               [unit](const auto& block) { return isBetween(unit, block.first, block.second); });
}

// The lower-case form of a UTF-16 unit in the Latin, Greek and Cyrillic scripts; any other unit unchanged.
//
// The plug-in links no locale library, which would quadruple its size. This is Unicode's simple mapping, as ranges.
constexpr char16_t lowerCase(char16_t unit) {
  const auto shifted = [unit](int distance) { return static_cast<char16_t>(unit + distance); };
  if (isBetween(unit, u'A', u'Z')) return shifted(32);
  if (unit < 0x00C0) return unit;
  if (isBetween(unit, 0x00C0, 0x00DE)) return unit == 0x00D7 ? unit : shifted(32);
  if (unit == 0x0178) return 0x00FF;
  if (isAlternatingCapital(unit)) return shifted(1);
  if (unit == 0x0386) return 0x03AC;
  if (isBetween(unit, 0x0388, 0x038A)) return shifted(37);
  if (unit == 0x038C) return 0x03CC;
  if (isBetween(unit, 0x038E, 0x038F)) return shifted(63);
  if (isBetween(unit, 0x0391, 0x03AB)) return unit == 0x03A2 ? unit : shifted(32);
  if (isBetween(unit, 0x0400, 0x040F)) return shifted(80);
  if (isBetween(unit, 0x0410, 0x042F)) return shifted(32);
  if (unit == 0x04C0) return 0x04CF;
  if (isBetween(unit, 0xFF21, 0xFF3A)) return shifted(32);
  return unit;
}

inline bool isSameWithoutCase(std::u16string_view a, std::u16string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return lowerCase(x) == lowerCase(y); });
}

}  // namespace Formats
