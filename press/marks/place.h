#pragma once

#include "press/marks/watermark.h"
#include "press/pdf/box.h"

namespace Press {

// An affine transformation of (x, y) to (a x + c y + e, b x + d y + f), like `cm` in PDF content.
struct Matrix {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;
};

// Applies `first`, then `second`.
Matrix operator*(const Matrix& first, const Matrix& second);

// The inverse of a non-singular matrix.
Matrix inverse(const Matrix& matrix);

// The `cm` operator with its operands, without a line break.
std::string concatenation(const Matrix& matrix);

// The bounding box of the transformed rectangle.
Box moved(const Box& box, const Matrix& matrix);

// The geometry of a page for placing marks.
struct PageFrame {
  Box visible;      // the visible area, in the page's units
  int turn = 0;     // the page's rotation for display, in degrees clockwise: 0, 90, 180 or 270
  double unit = 1;  // points per unit of the page
};

// The size of the displayed page, in points from (0, 0).
Box seenBox(const PageFrame& page);

// Maps the displayed page, in points from its bottom left corner, to the page's units.
Matrix fromSeen(const PageFrame& page);

// Scales and centres a displayed page into a box: from the page's units to the box's.
Matrix fitInto(const Box& box, const PageFrame& page);

// Places a mark with these bounds (`Outlines::bounds`): maps its points to the page's units. Used for the printed
// page, its picture and the editor's preview. The mark rotates about the centre of its bounds; at an edge, its rotated
// bounds keep a distance of `markMargin`.
Matrix placeMark(const PageFrame& page, const Box& bounds, const Watermark& watermark);

// The distance of marks from the edges, in points: a quarter of an inch, which is the unprintable margin of most
// printers; on tiny pages a twentieth of the shorter side.
double markMargin(const PageFrame& page);

}  // namespace Press
