#include "effect/watermark/numbers.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

namespace Effect {
namespace {

// Removes white space and a sign from the start of a text; true for a minus.
bool takeSign(std::u16string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(u" \t\n\v\f\r"), text.size()));
  const bool isNegative = text.starts_with(u'-');
  if (isNegative || text.starts_with(u'+')) text.remove_prefix(1);
  return isNegative;
}

}  // namespace

std::int32_t leadingInteger(std::u16string_view text) {
  constexpr std::int64_t least = std::numeric_limits<std::int32_t>::min();
  constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
  const bool isNegative = takeSign(text);
  std::int64_t number = 0;
  for (const char16_t unit : text) {
    if (unit < u'0' || unit > u'9') break;
    number = std::min(number * 10 + (unit - u'0'), -least);
  }
  return static_cast<std::int32_t>(isNegative ? -number : std::min(number, most));
}

// Not strtod, which depends on the process's locale.
double leadingNumber(std::u16string_view text) {
  const bool isNegative = takeSign(text);
  const std::size_t end = std::min(text.find_first_not_of(u"0123456789.eE+-"), text.size());
  const std::string digits(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end));
  if (digits.empty() || digits.find_first_of("0123456789.") != 0) return 0;
  double number = 0;
  const auto error = std::from_chars(digits.data(), digits.data() + digits.size(), number).ec;
  const bool isTooSmall = digits.find("e-") != digits.npos || digits.find("E-") != digits.npos;
  if (error == std::errc::result_out_of_range && !isTooSmall) number = std::numeric_limits<double>::max();
  return isNegative ? -number : number;
}

std::u16string decimalText(std::int64_t number) {
  char digits[24];
  const auto end = std::to_chars(digits, std::end(digits), number).ptr;
  return {digits, end};
}

}  // namespace Effect
