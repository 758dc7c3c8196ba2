#include "press/marks/watermark.h"

#include "formats/sentences.h"
#include "formats/text.h"
#include "formats/watermark_record.h"
#include "press/error.h"

#include <charconv>

namespace Press {
namespace {

namespace Prop = Formats::Prop;
namespace Value = Formats::Value;
namespace FontStyle = Formats::FontStyle;
using Formats::isName;
using Formats::Name;

[[noreturn]] void refuse(Name name, const std::string& value, std::string_view what) {
  throw Error(Formats::sentence("The watermark's {1} is {2}: choose or edit the watermark so that it {3}.",
                                Formats::toUtf8(name), Formats::quoted(value), Formats::sentence(what)));
}

double numberIn(const Properties& properties, Name name, double ordinary, double least, double most,
                std::string_view what) {
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
  constexpr Name name = Prop::watermarkTextColour;
  const std::string text = valueOf(properties, name);
  if (text.empty()) return ordinary;
  std::uint32_t value = 0;
  const char* end = text.data() + text.size();
  const bool isWhole = text.size() == 9 && text.front() == '#' &&
                       std::from_chars(text.data() + 1, end, value, 16).ptr == end && value <= 0xFFFFFF;
  if (!isWhole) refuse(name, text, Formats::sentenceTemplate("is of the form #00RRGGBB"));
  return value;
}

bool flagIn(const Properties& properties, Name name) {
  const std::string text = valueOf(properties, name);
  if (text.empty() || isName(text, Value::no)) return false;
  if (isName(text, Value::yes)) return true;
  refuse(name, text, Formats::sentenceTemplate("is True or False"));
}

// The place of a property's value in three one-letter codes.
template <class Place>
Place placeIn(const Properties& properties, Name name, const char* codes, std::string_view what) {
  const std::string text = valueOf(properties, name);
  if (text.empty()) return Place::centre;
  for (int index = 0; index < 3; ++index)
    if (text == std::string(1, codes[index])) return static_cast<Place>(index);
  refuse(name, text, what);
}

}  // namespace

Watermark watermarkFromProperties(const Properties& properties) {
  Watermark mark;
  if (!isSet(properties, Prop::watermark, Value::watermark)) return mark;
  mark.text = valueOf(properties, Prop::watermarkText);
  if (mark.text.empty()) return mark;
  if (const std::string face = valueOf(properties, Prop::watermarkTextFont); !face.empty()) mark.face = face;
  const std::string style = valueOf(properties, Prop::watermarkTextStyle);
  mark.isBold = isName(style, FontStyle::bold) || isName(style, FontStyle::boldItalic);
  mark.isItalic = isName(style, FontStyle::italic) || isName(style, FontStyle::boldItalic);
  mark.size = numberIn(properties, Prop::watermarkTextFontSize, mark.size, 1, 1000,
                       Formats::sentenceTemplate("is from 1 to 1000 points"));
  mark.colour = colourIn(properties, mark.colour);
  mark.angle = numberIn(properties, Prop::watermarkTextAngle, mark.angle, -1e6, 1e6,
                        Formats::sentenceTemplate("is a number of degrees"));
  mark.across = placeIn<Across>(properties, Prop::watermarkTextWidth, "LCR", Formats::sentenceTemplate("is L, C or R"));
  mark.down = placeIn<Down>(properties, Prop::watermarkTextHeight, "UCL", Formats::sentenceTemplate("is U, C or L"));
  mark.isOutlined = flagIn(properties, Prop::watermarkTextOutline);
  mark.transparency = numberIn(properties, Prop::watermarkTextTransparency, 0, 0, 100,
                               Formats::sentenceTemplate("is from 0 to 100 percent"));
  mark.fitsPage = !isSet(properties, Prop::watermarkTextScale, Value::no);
  mark.firstOnly = flagIn(properties, Prop::firstPageOnly);
  mark.onEachPage = isSet(properties, Prop::watermarkOccurance, Value::perPage);
  mark.isUnderPage = isSet(properties, Prop::watermarkLayering, Value::underlay);
  return mark;
}

}  // namespace Press
