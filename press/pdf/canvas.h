#pragma once

#include <string>
#include <string_view>

namespace Press {

// Operands and operator of a fill colour in PDF content: "0.1 0.2 0.3 rg" or "0 1 0 0 k".
using Ink = std::string_view;

// Writes page content: simple drawing with the fonts /F1 (Helvetica) and /F2 (Helvetica-Bold). Coordinates are in
// points from the bottom left.
class Canvas {
 public:
  enum class Align { left, centre, right };

  void fill(Ink ink, double x, double y, double width, double height);
  void stroke(Ink ink, double lineWidth, double x0, double y0, double x1, double y1);
  void text(Ink ink, bool bold, double size, double x, double y, std::string_view line, Align align = Align::left);

  // Wraps text into lines of at most `width`; returns the y coordinate of the baseline below the last one.
  double paragraph(Ink ink, double size, double x, double y, double width, std::string_view words);

  // Appends PDF operators unchanged.
  void raw(std::string_view operators);

  const std::string& content() const { return written; }

 private:
  std::string written;
};

}  // namespace Press
