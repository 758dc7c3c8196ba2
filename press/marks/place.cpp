#include "press/marks/place.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Press {

Matrix operator*(const Matrix& first, const Matrix& second) {
  return {first.a * second.a + first.b * second.c,
          first.a * second.b + first.b * second.d,
          first.c * second.a + first.d * second.c,
          first.c * second.b + first.d * second.d,
          first.e * second.a + first.f * second.c + second.e,
          first.e * second.b + first.f * second.d + second.f};
}

Matrix inverse(const Matrix& m) {
  const double whole = m.a * m.d - m.b * m.c;
  return {m.d / whole,
          -m.b / whole,
          -m.c / whole,
          m.a / whole,
          (m.c * m.f - m.d * m.e) / whole,
          (m.b * m.e - m.a * m.f) / whole};
}

std::string concatenation(const Matrix& matrix) {
  return number(matrix.a) + " " + number(matrix.b) + " " + number(matrix.c) + " " + number(matrix.d) + " " +
         number(matrix.e) + " " + number(matrix.f) + " cm";
}

Box moved(const Box& box, const Matrix& matrix) {
  const auto [lowX, highX] = std::minmax({matrix.a * box.x0, matrix.a * box.x1});
  const auto [leftX, rightX] = std::minmax({matrix.c * box.y0, matrix.c * box.y1});
  const auto [lowY, highY] = std::minmax({matrix.b * box.x0, matrix.b * box.x1});
  const auto [leftY, rightY] = std::minmax({matrix.d * box.y0, matrix.d * box.y1});
  return {lowX + leftX + matrix.e, lowY + leftY + matrix.f, highX + rightX + matrix.e, highY + rightY + matrix.f};
}

Box seenBox(const PageFrame& page) {
  const double width = (page.visible.x1 - page.visible.x0) * page.unit;
  const double height = (page.visible.y1 - page.visible.y0) * page.unit;
  return page.turn == 90 || page.turn == 270 ? Box{0, 0, height, width} : Box{0, 0, width, height};
}

Matrix fromSeen(const PageFrame& page) {
  const double s = 1 / page.unit;
  const Box& box = page.visible;
  switch (page.turn) {
    case 90: return {0, s, -s, 0, box.x1, box.y0};
    case 180: return {-s, 0, 0, -s, box.x1, box.y1};
    case 270: return {0, -s, s, 0, box.x0, box.y1};
    default: return {s, 0, 0, s, box.x0, box.y0};
  }
}

Matrix fitInto(const Box& box, const PageFrame& page) {
  const Box seen = seenBox(page);
  const double width = box.x1 - box.x0, height = box.y1 - box.y0;
  const double scale = std::min(width / seen.x1, height / seen.y1);
  const Matrix fitted{
      scale, 0, 0, scale, box.x0 + (width - scale * seen.x1) / 2, box.y0 + (height - scale * seen.y1) / 2};
  return inverse(fromSeen(page)) * fitted;
}

double markMargin(const PageFrame& page) {
  const Box seen = seenBox(page);
  return std::min(18.0, 0.05 * std::min(seen.x1, seen.y1));
}

Matrix placeMark(const PageFrame& page, const Box& bounds, const Watermark& watermark) {
  const Box seen = seenBox(page);
  const double margin = markMargin(page);
  const double radians = std::fmod(watermark.angle, 360) * std::numbers::pi / 180;
  const double cosine = std::cos(radians), sine = std::sin(radians);
  const double width = bounds.x1 - bounds.x0, height = bounds.y1 - bounds.y0;
  double halfWidth = (std::abs(cosine) * width + std::abs(sine) * height) / 2;
  double halfHeight = (std::abs(sine) * width + std::abs(cosine) * height) / 2;

  double scale = 1;
  if (watermark.fitsPage) {
    if (2 * halfWidth > seen.x1 - 2 * margin) scale = (seen.x1 - 2 * margin) / (2 * halfWidth);
    if (2 * halfHeight > seen.y1 - 2 * margin) scale = std::min(scale, (seen.y1 - 2 * margin) / (2 * halfHeight));
  }
  halfWidth *= scale;
  halfHeight *= scale;

  Point middle{seen.x1 / 2, seen.y1 / 2};
  if (watermark.across == Across::left) middle.x = margin + halfWidth;
  if (watermark.across == Across::right) middle.x = seen.x1 - margin - halfWidth;
  if (watermark.down == Down::upper) middle.y = seen.y1 - margin - halfHeight;
  if (watermark.down == Down::lower) middle.y = margin + halfHeight;

  const Matrix toMiddle{1, 0, 0, 1, -(bounds.x0 + bounds.x1) / 2, -(bounds.y0 + bounds.y1) / 2};
  const Matrix turned{scale * cosine, -scale * sine, scale * sine, scale * cosine, middle.x, middle.y};
  return toMiddle * turned * fromSeen(page);
}

}  // namespace Press
