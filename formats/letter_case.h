// Case of letters, for the order of lists and for names of files.
#pragma once

#include "formats/lower_case_table.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace Formats {

// The small letter of a capital, by Unicode's simple mapping; any other UTF-16 unit unchanged.
//
// The plug-in links no locale library, which would quadruple its size.
constexpr char16_t lowerCase(char16_t unit) {
  const auto* const range =
      std::lower_bound(std::begin(capitalRanges), std::end(capitalRanges), unit,
                       [](const CapitalRange& capitals, char16_t letter) { return capitals.last < letter; });
  if (range == std::end(capitalRanges) || unit < range->first || (unit - range->first) % range->step != 0) return unit;
  return static_cast<char16_t>(unit + range->distance);
}

inline bool isSameWithoutCase(std::u16string_view a, std::u16string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return lowerCase(x) == lowerCase(y); });
}

}  // namespace Formats
