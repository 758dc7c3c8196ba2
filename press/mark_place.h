#pragma once

#include "press/box.h"
#include "press/watermark.h"

namespace Press {

/// Takes a point to (a x + c y + e, b x + d y + f), as `cm` in PDF content does.
struct Matrix {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;
};

/// First `first`, then `second`.
Matrix operator*(const Matrix& first, const Matrix& second);

/// What undoes the matrix, which must not flatten anything.
Matrix inverse(const Matrix& matrix);

/// The operator that puts the matrix in force, without a line end.
std::string concatenation(const Matrix& matrix);

/// The rectangle around a rectangle that a matrix has moved.
Box moved(const Box& box, const Matrix& matrix);

/// A page as marks are placed on it.
struct PageFrame {
  Box visible;      ///< What is seen of the page, in its own units.
  int turn = 0;     ///< Degrees clockwise by which the page is turned to be seen: 0, 90, 180 or 270.
  double unit = 1;  ///< Points to a unit of the page.
};

/// The size of the page as it is seen, in points from (0, 0).
Box seenBox(const PageFrame& page);

/// From the page as it is seen, in points from its bottom left corner, to the page's own units.
Matrix fromSeen(const PageFrame& page);

/// What makes a page, as it is seen, as large as fits into a box, in its middle: from the page's own units to the
/// box's.
Matrix fitInto(const Box& box, const PageFrame& page);

/// Where a mark with these bounds (`Outlines::bounds`) goes: from its own points to the page's own units. The one rule
/// for the printed page, its picture and the editor's preview: the middle of the mark's bounds is the point that it
/// turns about; at an edge, its turned bounds keep `markMargin` from that edge.
Matrix placeMark(const PageFrame& page, const Box& bounds, const Watermark& watermark);

/// How far marks stay away from the edges, in points: a quarter of an inch, which most printers leave bare; on tiny
/// pages a twentieth of the shorter side.
double markMargin(const PageFrame& page);

}  // namespace Press
