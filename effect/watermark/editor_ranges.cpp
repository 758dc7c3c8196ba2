#include "effect/watermark/editor_ranges.h"

#include "effect/watermark/numbers.h"
#include "formats/colour.h"

#include <algorithm>

namespace Effect {
namespace {

constexpr std::u16string_view decimalDigits = u"0123456789";

bool isFontStyle(std::u16string_view text) {
  return text == FontStyle::regular || text == FontStyle::bold || text == FontStyle::italic ||
         text == FontStyle::boldItalic;
}

bool isPrintStyle(std::u16string_view text) {
  return text == PrintStyle::solid || text == PrintStyle::outline || text == PrintStyle::transparency;
}

Kiln::WString intensityOf(Kiln::Dom::INode& record) {
  const Node transparency = record.child(Field::transparency);
  return transparency ? fieldText(*transparency, Field::intensity) : Kiln::WString();
}

}  // namespace

std::u16string_view cutToBox(std::u16string_view text) {
  constexpr std::size_t most = mostTextUnits;
  if (text.size() <= most) return text;
  const bool splitsPair = (text[most - 1] & 0xFC00) == 0xD800 && (text[most] & 0xFC00) == 0xDC00;
  return text.substr(0, splitsPair ? most - 1 : most);
}

std::optional<std::int32_t> angleOf(std::u16string_view text) {
  const std::u16string_view digits = text.starts_with(u'-') ? text.substr(1) : text;
  if (digits.find_first_not_of(decimalDigits) != digits.npos) return {};
  const std::int32_t size = leadingInteger(digits);
  if (size > 90) return {};
  return digits.size() == text.size() ? size : -size;
}

std::optional<std::int32_t> percentOf(std::u16string_view text) {
  if (text.find_first_not_of(decimalDigits) != text.npos) return {};
  const std::int32_t percent = leadingInteger(text);
  return percent > 100 ? std::nullopt : std::optional(percent);
}

bool isFontSize(std::u16string_view text) {
  const std::int32_t points = leadingInteger(text);
  return points >= 6 && points <= 300;
}

bool isPosition(std::u16string_view code) {
  constexpr std::u16string_view vertical = u"UCL";
  constexpr std::u16string_view horizontal = u"LCR";
  return code.size() == 2 && vertical.find(code[0]) != vertical.npos && horizontal.find(code[1]) != horizontal.npos;
}

Node shownValues(Kiln::Host& host, Kiln::Dom::INode& record) {
  Node shown = noneRecord(host, {});
  const auto take = [&](Name field, const auto& canBeShown) {
    const Node found = record.child(field);
    if (found && canBeShown(found->value().view())) setField(*shown, field, found->value());
  };
  const auto any = [](std::u16string_view) { return true; };
  take(Field::label, any);
  take(Field::stylename, any);
  take(Field::fontname, [](std::u16string_view face) { return !face.empty(); });
  take(Field::fontsize, any);
  take(Field::fontstyle, isFontStyle);
  take(Field::colour, isColour);
  take(Field::angle, [](std::u16string_view text) { return angleOf(text).has_value(); });
  take(Field::printStyle, isPrintStyle);

  const Kiln::WString vertical = fieldText(record, Field::positionY);
  const Kiln::WString horizontal = fieldText(record, Field::positionX);
  if (isPosition(vertical.str() + horizontal.str())) {
    setField(*shown, Field::positionY, vertical);
    setField(*shown, Field::positionX, horizontal);
  }
  if (const Kiln::WString intensity = intensityOf(record); percentOf(intensity.view()))
    setField(*shown->child(Field::transparency), Field::intensity, intensity);
  return shown;
}

void keepWhatCannotBeShown(Kiln::Host& host, Kiln::Dom::INode& original, Kiln::Dom::INode& record) {
  const Node shown = shownValues(host, original);
  const auto keep = [&](Name field) { setField(record, field, fieldText(original, field)); };
  for (const Name text : {Field::label, Field::stylename}) {
    const Kiln::WString own = fieldText(original, text);
    const bool isReference = host.translate(own).view() != own.view();
    if (!isReference && cutToBox(own.view()).size() < own.size()) keep(text);
  }
  // A colour is another one than that shown where the model prints none.
  for (const Name field :
       {Field::fontstyle, Field::colour, Field::angle, Field::positionX, Field::positionY, Field::printStyle}) {
    const Kiln::WString own = fieldText(original, field);
    const Kiln::WString written = fieldText(record, field);
    const bool isReplaced = own.view() != fieldText(*shown, field).view();
    if (!own.empty() && isReplaced && written.view() == fieldText(*shown, field).view()) keep(field);
  }
  const Kiln::WString intensity = intensityOf(original);
  const bool applies = fieldText(original, Field::printStyle).view() == PrintStyle::transparency;
  if (applies && !intensity.empty() && !percentOf(intensity.view()))
    setField(*record.childOrNew(Field::transparency), Field::intensity, intensity);
}

}  // namespace Effect
