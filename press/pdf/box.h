#pragma once

#include <string>

namespace Press {

struct Point {
  double x = 0, y = 0;
};

// A rectangle in the units of its page, x0 <= x1 and y0 <= y1.
struct Box {
  double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};

// A number in PDF syntax, without an exponent and with at most `decimals` decimals.
std::string number(double value, int decimals = 6);

// The operands and operator of a rectangle path, without a line break.
std::string rectangle(const Box& box);

}  // namespace Press
