#include "press/marks/watermark.h"

#include "press/error.h"

#include <charconv>

namespace Press {
namespace {

[[noreturn]] void refuse(const char* name, const std::string& value, const char* what) {
  throw Error(std::string("The watermark's ") + name + " is \"" + value +
              "\": choose or edit the watermark so that it " + what + ".");
}

double numberIn(const Properties& properties, const char* name, double ordinary, double least, double most,
                const char* what) {
  const std::string text = valueOf(properties, name);
  if (text.empty()) return ordinary;
  double value = 0;
  const char* end = text.data() + text.size();
  const std::from_chars_result read = std::from_chars(text.data(), end, value);
  // Written so that NaN is rejected too.
  if (read.ec != std::errc() || read.ptr != end || !(value >= least && value <= most)) refuse(name, text, what);
  return value;
}

std::uint32_t colourIn(const Properties& properties, std::uint32_t ordinary) {
  const char* name = "WatermarkTextColour";
  const std::string text = valueOf(properties, name);
  if (text.empty()) return ordinary;
  std::uint32_t value = 0;
  const char* end = text.data() + text.size();
  const bool isWhole = text.size() == 9 && text.front() == '#' &&
                       std::from_chars(text.data() + 1, end, value, 16).ptr == end && value <= 0xFFFFFF;
  if (!isWhole) refuse(name, text, "is of the form #00RRGGBB");
  return value;
}

bool flagIn(const Properties& properties, const char* name) {
  const std::string text = valueOf(properties, name);
  if (text.empty() || text == "False") return false;
  if (text == "True") return true;
  refuse(name, text, "is True or False");
}

// The place of a property's value in three one-letter codes.
template <class Place>
Place placeIn(const Properties& properties, const char* name, const char* codes, const char* what) {
  const std::string text = valueOf(properties, name);
  if (text.empty()) return Place::centre;
  for (int index = 0; index < 3; ++index)
    if (text == std::string(1, codes[index])) return static_cast<Place>(index);
  refuse(name, text, what);
}

}  // namespace

Watermark watermarkFromProperties(const Properties& properties) {
  Watermark mark;
  if (valueOf(properties, "Watermark") != "Watermark") return mark;
  mark.text = valueOf(properties, "WatermarkText");
  if (mark.text.empty()) return mark;
  if (const std::string face = valueOf(properties, "WatermarkTextFont"); !face.empty()) mark.face = face;
  const std::string style = valueOf(properties, "WatermarkTextStyle");
  mark.isBold = style == "Bold" || style == "BoldItalic";
  mark.isItalic = style == "Italic" || style == "BoldItalic";
  mark.size = numberIn(properties, "WatermarkTextFontSize", mark.size, 1, 1000, "is from 1 to 1000 points");
  mark.colour = colourIn(properties, mark.colour);
  mark.angle = numberIn(properties, "WatermarkTextAngle", mark.angle, -1e6, 1e6, "is a number of degrees");
  mark.across = placeIn<Across>(properties, "WatermarkTextWidth", "LCR", "is L, C or R");
  mark.down = placeIn<Down>(properties, "WatermarkTextHeight", "UCL", "is U, C or L");
  mark.isOutlined = flagIn(properties, "WatermarkTextOutline");
  mark.transparency = numberIn(properties, "WatermarkTextTransparency", 0, 0, 100, "is from 0 to 100 percent");
  mark.fitsPage = valueOf(properties, "WatermarkTextScale") != "False";
  mark.firstOnly = flagIn(properties, "FirstPageOnly");
  mark.onEachPage = valueOf(properties, "WatermarkOccurance") == "PerPage";
  mark.isUnderPage = valueOf(properties, "WatermarkLayering") == "Underlay";
  return mark;
}

}  // namespace Press
