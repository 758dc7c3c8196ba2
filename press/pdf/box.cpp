#include "press/pdf/box.h"

#include <charconv>

namespace Press {

std::string number(double value, int decimals) {
  char text[400];  // enough for the largest number
  const std::to_chars_result result =
      std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
  std::string digits(text, result.ptr);
  digits.erase(digits.find_last_not_of('0') + 1);
  if (digits.back() == '.') digits.pop_back();
  return digits == "-0" ? "0" : digits;
}

std::string rectangle(const Box& box) {
  return number(box.x0) + " " + number(box.y0) + " " + number(box.x1 - box.x0) + " " + number(box.y1 - box.y0) + " re";
}

}  // namespace Press
