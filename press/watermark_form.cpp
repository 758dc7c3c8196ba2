#include "press/watermark_form.h"

namespace Press {

namespace {

/// A thousandth of a point is beyond what any printer shows.
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

std::string colour(std::uint32_t rgb, const char* operation) {
  std::string text;
  for (const int shift : {16, 8, 0}) text += number((rgb >> shift & 0xFFu) / 255.0, decimals) + " ";
  return text + operation + "\n";
}

std::string contentOf(const Watermark& watermark, const Outlines& outlines) {
  std::string content = colour(watermark.colour, "rg") + colour(watermark.colour, "RG") + "1 j 1 J\n";
  for (const OutlinePart& part : outlines.parts) {
    if (part.lineWidth > 0) content += number(part.lineWidth, decimals) + " w\n";
    append(content, part.path);
    content += part.lineWidth <= 0 ? "f\n" : part.isFilled ? "B\n" : "S\n";
  }
  return content;
}

}  // namespace

QPDFObjectHandle watermarkForm(QPDF& pdf, const Watermark& watermark, const Outlines& outlines) {
  const Box& bounds = outlines.bounds;
  const Box box{bounds.x0 - 1, bounds.y0 - 1, bounds.x1 + 1, bounds.y1 + 1};
  PageContent content(pdf);
  QPDFObjectHandle letters = content.newForm(box, contentOf(watermark, outlines), QPDFObjectHandle::newDictionary());
  if (watermark.transparency <= 0) return letters;

  // Seen through as a whole, so that lines and overlapping letters do not show through each other.
  letters.getDict().replaceKey("/Group", QPDFObjectHandle::parse("<< /S /Transparency >>"));
  const std::string opacity = number(1 - watermark.transparency / 100, decimals);
  QPDFObjectHandle resources =
      QPDFObjectHandle::parse("<< /ExtGState << /S << /ca " + opacity + " /CA " + opacity + " >> >> /XObject << >> >>");
  resources.getKey("/XObject").replaceKey("/M", letters);
  return content.newForm(box, "/S gs /M Do\n", resources);
}

}  // namespace Press
