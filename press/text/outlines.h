#pragma once

#include "press/marks/watermark.h"
#include "press/pdf/box.h"

#include <string>
#include <vector>

namespace Press {

// A step of a path. `move` and `line` use one point, `curve` three (two control points and the end), `close` none.
struct PathStep {
  enum class Kind { move, line, curve, close };
  Kind kind = Kind::close;
  Point points[3] = {};
};
using Path = std::vector<PathStep>;

// Letters with the same style: a filled path (nonzero rule), a stroked one, or both.
struct OutlinePart {
  Path path;
  bool isFilled = true;
  double lineWidth = 0;  // points, with round joins; 0 for no stroke
};

// Text as outlines: in points at the text's size, y upwards, with the baseline on y = 0 from x = 0.
struct Outlines {
  std::vector<OutlinePart> parts;
  Box bounds;                      // of everything drawn, including strokes; empty when nothing is visible
  std::vector<std::string> notes;  // sentences about missing faces

  bool empty() const { return parts.empty(); }
};

// Shapes the watermark's text in its face, style and size, with other installed faces for missing letters. The caller
// applies colour, transparency and position. Throws Error when the text cannot be drawn.
Outlines outlinesOf(const Watermark& watermark);

}  // namespace Press
