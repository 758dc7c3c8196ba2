#include "effect/watermark/numbers.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
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

// The number at the start of a text of digits, which is not empty. Never infinite.
double numberOf(const std::string& digits) {
  constexpr double most = std::numeric_limits<double>::max();
#ifdef __cpp_lib_to_chars
  double number = 0;
  const auto error = std::from_chars(digits.data(), digits.data() + digits.size(), number).ec;
  const bool isTooSmall = digits.find("e-") != digits.npos || digits.find("E-") != digits.npos;
  return error == std::errc::result_out_of_range && !isTooSmall ? most : number;
#else
  // This library's from_chars reads integers alone, and strtod expects the decimal point of the process's locale.
  std::string local = digits;
  if (const auto point = local.find('.'); point != local.npos)
    local.replace(point, 1, std::localeconv()->decimal_point);
  return std::min(std::strtod(local.c_str(), nullptr), most);
#endif
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

double leadingNumber(std::u16string_view text) {
  const bool isNegative = takeSign(text);
  const std::size_t end = std::min(text.find_first_not_of(u"0123456789.eE+-"), text.size());
  const std::string digits(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end));
  if (digits.empty() || digits.find_first_of("0123456789.") != 0) return 0;
  const double number = numberOf(digits);
  return isNegative ? -number : number;
}

std::u16string decimalText(std::int64_t number) {
  char digits[24];
  const auto end = std::to_chars(digits, std::end(digits), number).ptr;
  return {digits, end};
}

}  // namespace Effect
