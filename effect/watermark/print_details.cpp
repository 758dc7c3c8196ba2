#include "effect/watermark/print_details.h"

#include "effect/watermark/numbers.h"

#include <algorithm>

namespace Effect {
namespace {

std::u16string integerText(Kiln::Dom::INode& record, Name field) {
  return decimalText(leadingInteger(fieldText(record, field).view()));
}

// A colour with a transparency in front: "#00" and the six digits.
std::u16string printColour(std::u16string_view colour) {
  return u"#00" + std::u16string(colour.substr(std::min<std::size_t>(1, colour.size()), 6));
}

std::u16string transparencyText(Kiln::Dom::INode& record) {
  const Node transparency = record.child(Field::transparency);
  const bool applies = fieldText(record, Field::printStyle).view() == PrintStyle::transparency;
  return applies && transparency ? integerText(*transparency, Field::intensity) : u"0";
}

}  // namespace

void writePrintDetails(Kiln::Host& host, Kiln::Property& model, Kiln::Dom::INode& record, bool isNoneRecord) {
  const auto write = [&model](Name property, Kiln::WStringView value) {
    if (const auto found = model.child(property)) found->setValue(value);
  };
  const auto copy = [&](Name property, Name field) { write(property, fieldText(record, field)); };

  write(Prop::watermarkText, isNoneRecord ? Kiln::WString() : host.translate(fieldText(record, Field::label)));
  copy(Prop::watermarkTextWidth, Field::positionX);
  copy(Prop::watermarkTextHeight, Field::positionY);
  write(Prop::watermarkTextScale, Value::yes);
  write(Prop::watermarkLayering, Value::overlay);
  write(Prop::watermarkTextFontSize, integerText(record, Field::fontsize));
  // The print path counts clockwise, with 360 for upright text.
  write(Prop::watermarkTextAngle,
        decimalText(std::int64_t{360} - leadingInteger(fieldText(record, Field::angle).view())));
  copy(Prop::watermarkTextStyle, Field::fontstyle);
  copy(Prop::watermarkTextFont, Field::fontname);
  write(Prop::watermarkTextColour, printColour(fieldText(record, Field::colour).view()));
  write(Prop::watermarkTextTransparency, transparencyText(record));
  const bool isOutline = fieldText(record, Field::printStyle).view() == PrintStyle::outline;
  write(Prop::watermarkTextOutline, isOutline ? Value::yes : Value::no);
}

}  // namespace Effect
