#pragma once

#include <string>

namespace Press {

/// A rectangle in the units of its page, x0 <= x1 and y0 <= y1.
struct Box {
  double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};

/// A number as PDF content writes it, without an exponent.
std::string number(double value);

/// The operands and operator of a rectangle path, without a line end.
std::string rectangle(const Box& box);

}  // namespace Press
