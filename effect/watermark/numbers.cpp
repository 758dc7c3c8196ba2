#include "effect/watermark/numbers.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

namespace Effect {

std::int32_t leadingInteger(std::u16string_view text) {
  constexpr std::int64_t least = std::numeric_limits<std::int32_t>::min();
  constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
  text.remove_prefix(std::min(text.find_first_not_of(u" \t\n\v\f\r"), text.size()));
  const bool isNegative = text.starts_with(u'-');
  if (isNegative || text.starts_with(u'+')) text.remove_prefix(1);
  std::int64_t number = 0;
  for (const char16_t unit : text) {
    if (unit < u'0' || unit > u'9') break;
    number = std::min(number * 10 + (unit - u'0'), -least);
  }
  return static_cast<std::int32_t>(isNegative ? -number : std::min(number, most));
}

std::u16string decimalText(std::int64_t number) {
  char digits[24];
  const auto end = std::to_chars(digits, std::end(digits), number).ptr;
  return {digits, end};
}

}  // namespace Effect
