#include "press/pages/shape.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Press {
namespace {

constexpr Box letter{0, 0, 612, 792};

std::optional<Box> boxFrom(QPDFObjectHandle object) {
  constexpr double farthest = 1e7;  // 140 times the limit of PDF readers; keeps sums and numbers in range.
  if (!object.isInitialized() || !object.isRectangle()) return std::nullopt;
  const QPDFObjectHandle::Rectangle corners = object.getArrayAsRectangle();
  const Box box{corners.llx, corners.lly, corners.urx, corners.ury};
  const bool sensible = box.x0 < box.x1 && box.y0 < box.y1 && box.x0 >= -farthest && box.y0 >= -farthest &&
                        box.x1 <= farthest && box.y1 <= farthest;
  return sensible ? std::optional(box) : std::nullopt;
}

std::optional<Box> common(const Box& a, const Box& b) {
  const Box box{std::max(a.x0, b.x0), std::max(a.y0, b.y0), std::min(a.x1, b.x1), std::min(a.y1, b.y1)};
  return box.x0 < box.x1 && box.y0 < box.y1 ? std::optional(box) : std::nullopt;
}

Box around(const Box& a, const Box& b) {
  constexpr double margin = 1;  // rasterisers round page edges outwards
  return {std::min(a.x0, b.x0) - margin, std::min(a.y0, b.y0) - margin, std::max(a.x1, b.x1) + margin,
          std::max(a.y1, b.y1) + margin};
}

int turnFrom(QPDFObjectHandle object) {
  if (!object.isInitialized() || !object.isNumber()) return 0;
  const double degrees = std::fmod(object.getNumericValue(), 360);
  const int turn = static_cast<int>(degrees < 0 ? degrees + 360 : degrees);
  return turn % 90 == 0 ? turn % 360 : 0;
}

double unitFrom(QPDFObjectHandle page) {
  QPDFObjectHandle object = page.getKey("/UserUnit");
  const double unit = object.isNumber() ? object.getNumericValue() : 1;
  return unit > 0 ? unit : 1;
}

}  // namespace

PageShape shapeOf(const PageEntry& entry) {
  const Box media = boxFrom(entry.mediaBox).value_or(letter);
  const Box crop = boxFrom(entry.cropBox).value_or(media);
  PageShape shape;
  shape.visible = common(crop, media).value_or(media);
  shape.reach = around(crop, media);
  shape.turn = turnFrom(entry.rotate);
  shape.unit = unitFrom(entry.page);
  return shape;
}

}  // namespace Press
