#include "app/watermark_look.h"

#include "app/messages.h"
#include "formats/colour.h"
#include "formats/names.h"
#include "formats/near_names.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "formats/watermark_record.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <stdexcept>

namespace App {
namespace {

namespace Prop = Formats::Prop;
using Formats::toUtf16;

constexpr std::size_t mostTextUnits = 63;

struct Place {
  const char* name;
  const char16_t* position;
};

constexpr Place places[] = {
    {"top-left", u"UL"}, {"top", u"UC"},         {"top-right", u"UR"}, {"left", u"CL"},         {"center", u"CC"},
    {"right", u"CR"},    {"bottom-left", u"LL"}, {"bottom", u"LC"},    {"bottom-right", u"LR"},
};

constexpr Formats::Name styles[] = {Formats::FontStyle::regular, Formats::FontStyle::bold, Formats::FontStyle::italic,
                                    Formats::FontStyle::boldItalic};

std::optional<int> numberIn(const std::string& word) {
  int number = 0;
  const char* const end = word.data() + word.size();
  const auto [stop, problem] = std::from_chars(word.data(), end, number);
  return problem == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

// `refusal` is the template of a sentence with the word and the limits.
void demandNumber(const std::optional<std::string>& word, int least, int most, std::string_view refusal) {
  if (!word) return;
  const auto number = numberIn(*word);
  if (!number || *number < least || *number > most)
    throw std::runtime_error(Formats::sentence(refusal, inQuotes(*word), least, most));
}

// `refusal` is the template of a sentence with the word and all that it can be.
void demandOneOf(const std::optional<std::string>& word, const std::vector<std::string>& all,
                 std::string_view refusal) {
  if (!word || std::ranges::find(all, *word) != all.end()) return;
  throw std::runtime_error(Formats::sentence(refusal, inQuotes(*word), Formats::alternatives(all)) +
                           Formats::didYouMean(all, *word));
}

}  // namespace

std::vector<std::string> watermarkStyles() {
  std::vector<std::string> names;
  for (const Formats::Name style : styles) names.push_back(Formats::toUtf8(style));
  return names;
}

std::vector<std::string> watermarkPlaces() {
  std::vector<std::string> names;
  for (const Place& place : places) names.emplace_back(place.name);
  return names;
}

void WatermarkLook::declare(CLI::App& command, const std::string& start) {
  const auto add = [&](const char* name, std::optional<std::string>& value, const char* type, const std::string& help) {
    command.add_option_function<std::string>(
               start + name, [&value](const std::string& word) { value = word; }, help)
        ->type_name(type);
  };
  add("font", font, "FACE", Formats::sentence("The watermark's face, Arial for example"));
  add("style", style, "STYLE", Formats::sentence("Regular, Bold, Italic or BoldItalic"));
  add("size", size, "POINTS", Formats::sentence("The size of its letters, from 6 to 300"));
  add("colour", colour, "#RRGGBB", Formats::sentence("Its colour, #FF0000 for red"));
  add("angle", angle, "DEGREES", Formats::sentence("From -90 to 90; 45 rises to the upper right"));
  add("place", place, "PLACE", Formats::sentence("top-left, top, top-right, left, center and so on"));
  add("transparency", transparency, "PERCENT", Formats::sentence("From 0 to 100"));
  command.add_flag(start + "outline", isOutline, Formats::sentence("Prints its letters' outlines alone"));
}

bool WatermarkLook::isGiven() const {
  return font || style || size || colour || angle || place || transparency || isOutline;
}

void WatermarkLook::demandValid() const {
  demandOneOf(style, watermarkStyles(),
              Formats::sentenceTemplate("The style of a watermark cannot be {1}; it can be {2}."));
  demandNumber(size, 6, 300,
               Formats::sentenceTemplate(
                   "The size of a watermark cannot be {1}: it is a whole number from {2} to {3}, in points."));
  demandNumber(angle, -90, 90,
               Formats::sentenceTemplate(
                   "The angle of a watermark cannot be {1}: it is a whole number from {2} to {3}, in degrees."));
  demandNumber(
      transparency, 0, 100,
      Formats::sentenceTemplate(
          "The transparency of a watermark cannot be {1}: it is a whole number from {2} to {3}, in per cent."));
  demandOneOf(place, watermarkPlaces(),
              Formats::sentenceTemplate("The place of a watermark cannot be {1}; it can be {2}."));
  if (colour && !Formats::isColour(toUtf16(*colour)))
    throw std::runtime_error(Formats::sentence(
        "The colour of a watermark cannot be {1}: write it as #RRGGBB, in hexadecimal digits.", inQuotes(*colour)));
  if (isOutline && transparency)
    throw std::runtime_error(
        Formats::sentence("A watermark cannot be an outline and transparent: choose one of them."));
  if (font && font->empty()) throw std::runtime_error(Formats::sentence("The font of a watermark has to be named."));
}

std::u16string WatermarkLook::position() const {
  return std::ranges::find_if(places, [this](const Place& each) { return *place == each.name; })->position;
}

Refhost::TracePairs WatermarkLook::properties() const {
  Refhost::TracePairs pairs;
  const auto add = [&pairs](Formats::Name property, std::u16string value) {
    pairs.emplace_back(property, std::move(value));
  };
  if (font) add(Prop::watermarkTextFont, toUtf16(*font));
  if (style) add(Prop::watermarkTextStyle, toUtf16(*style));
  if (size) add(Prop::watermarkTextFontSize, toUtf16(*size));
  if (colour) add(Prop::watermarkTextColour, u"#00" + toUtf16(colour->substr(1)));
  if (angle) add(Prop::watermarkTextAngle, toUtf16(std::to_string(360 - *numberIn(*angle))));
  if (place) {
    add(Prop::watermarkTextHeight, position().substr(0, 1));
    add(Prop::watermarkTextWidth, position().substr(1));
  }
  if (transparency) add(Prop::watermarkTextTransparency, toUtf16(*transparency));
  if (isOutline || transparency)
    add(Prop::watermarkTextOutline, std::u16string(isOutline ? Formats::Value::yes : Formats::Value::no));
  if (isOutline) add(Prop::watermarkTextTransparency, u"0");
  return pairs;
}

void demandWatermarkText(const std::string& text) {
  const std::u16string units = toUtf16(text);
  if (units.find_first_not_of(u' ') == units.npos)
    throw std::runtime_error(Formats::sentence("A watermark needs a text."));
  if (units.size() > mostTextUnits)
    throw std::runtime_error(Formats::sentence(
        "The text of a watermark has at most {1} characters, and this one has {2}.", mostTextUnits, units.size()));
  if (std::ranges::any_of(units, [](char16_t unit) { return unit < u' ' || unit == 0x7F; }))
    throw std::runtime_error(
        Formats::sentence("The text of a watermark is one line, without tabs and other control characters."));
}

}  // namespace App
