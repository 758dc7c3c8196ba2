#include "press/text/outlines_content.h"

namespace Press {
namespace {

// A thousandth of a point is finer than any printer's resolution.
constexpr int decimals = 3;

void append(std::string& content, const Path& path) {
  for (const PathStep& step : path) {
    const int points = step.kind == PathStep::Kind::curve ? 3 : step.kind == PathStep::Kind::close ? 0 : 1;
    for (int index = 0; index < points; ++index)
      content += number(step.points[index].x, decimals) + " " + number(step.points[index].y, decimals) + " ";
    content += "mlch"[static_cast<int>(step.kind)];
    content += '\n';
  }
}

}  // namespace

std::string contentOf(const Outlines& outlines) {
  std::string content;
  for (const OutlinePart& part : outlines.parts) {
    if (part.lineWidth > 0) content += "1 j 1 J " + number(part.lineWidth, decimals) + " w\n";
    append(content, part.path);
    content += part.lineWidth <= 0 ? "f\n" : part.isFilled ? "B\n" : "S\n";
  }
  return content;
}

}  // namespace Press
