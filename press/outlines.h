#pragma once

#include <string>
#include <vector>

#include "press/box.h"
#include "press/watermark.h"

namespace Press {

/// One step of a path. Points are used from the front: one by `move` and `line`, three by `curve` (two that steer, and
/// where it ends), none by `close`.
struct PathStep {
  enum class Kind { move, line, curve, close };
  Kind kind = Kind::close;
  Point points[3] = {};
};
using Path = std::vector<PathStep>;

/// Letters that are drawn alike: what their path encloses (by the nonzero rule), a line along it, or both.
struct OutlinePart {
  Path path;
  bool isFilled = true;
  double lineWidth = 0;  ///< Points, with round corners; 0 draws no line.
};

/// A text as shapes. In points at the text's own size, y upwards, the baseline along y = 0 from x = 0.
struct Outlines {
  std::vector<OutlinePart> parts;
  Box bounds;  ///< Of all that is drawn, lines included. Empty when nothing is seen.
  std::vector<std::string>
      notes;  ///< Sentences on what had to be printed otherwise than asked: faces that are missing.

  bool empty() const { return parts.empty(); }
};

/// Shapes the watermark's text in its face, style and size; letters that the face lacks come from other installed
/// faces. Colour, transparency and place are left to who draws it. Throws `Error` when the text cannot be drawn at all.
Outlines outlinesOf(const Watermark& watermark);

}  // namespace Press
