#include "press/marks/watermark_form.h"

#include "press/text/outlines_content.h"

namespace Press {
namespace {

constexpr int decimals = 3;

std::string colour(std::uint32_t rgb, const char* operation) {
  std::string text;
  for (const int shift : {16, 8, 0}) text += number((rgb >> shift & 0xFFu) / 255.0, decimals) + " ";
  return text + operation + "\n";
}

}  // namespace

QPDFObjectHandle watermarkForm(QPDF& pdf, const Watermark& watermark, const Outlines& outlines) {
  const Box& bounds = outlines.bounds;
  const Box box{bounds.x0 - 1, bounds.y0 - 1, bounds.x1 + 1, bounds.y1 + 1};
  PageContent content(pdf);
  const std::string drawn = colour(watermark.colour, "rg") + colour(watermark.colour, "RG") + contentOf(outlines);
  QPDFObjectHandle letters = content.newForm(box, drawn, QPDFObjectHandle::newDictionary());
  if (watermark.transparency <= 0) return letters;

  // A transparency group, so that strokes and overlapping letters do not show through each other.
  letters.getDict().replaceKey("/Group", QPDFObjectHandle::parse("<< /S /Transparency >>"));
  const std::string opacity = number(1 - watermark.transparency / 100, decimals);
  QPDFObjectHandle resources =
      QPDFObjectHandle::parse("<< /ExtGState << /S << /ca " + opacity + " /CA " + opacity + " >> >> /XObject << >> >>");
  resources.getKey("/XObject").replaceKey("/M", letters);
  return content.newForm(box, "/S gs /M Do\n", resources);
}

}  // namespace Press
