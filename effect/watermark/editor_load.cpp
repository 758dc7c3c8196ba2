// Loads a record into the editor's widgets. Every step also writes the value into the edited record.
#include "effect/watermark/editor.h"
#include "effect/watermark/editor_values.h"

namespace Kiln::XUL {

using namespace Effect;

void WatermarkDlg::loadWatermark(const SmartPtr<Dom::INode>& source) {
  if (!source) return;
  const Node values = shownValues(host.services, *source);
  loadNames(*values);
  loadColour(*values);
  loadFont(*values);
  loadAngle(*values);
  applyPosition(fieldText(*values, Field::positionY).str() + fieldText(*values, Field::positionX).str());
  loadPrintStyle(*values);
}

void WatermarkDlg::loadNames(Dom::INode& values) {
  if (const auto box = widget<TextBox>(WidgetId::textBox)) {
    const std::u16string label = shownText(fieldText(values, Field::label));
    setField(*record, Field::label, label);
    put(box, label);
    if (preview) preview->setText(label);
  }
  if (styleNameBox) {
    const std::u16string name = shownText(fieldText(values, Field::stylename));
    setField(*record, Field::stylename, name);
    put(styleNameBox, name);
  }
  updateOkButton(fieldText(*record, Field::label), fieldText(*record, Field::stylename), false);
}

// A field's text as displayed: empty for a watermark without a text, and truncated to the maximum input length.
std::u16string WatermarkDlg::shownText(WStringView text) {
  if (text.view() == Token::none) return {};
  if (!text.view().starts_with(u'$')) return std::u16string(cutToBox(text));
  return std::u16string(cutToBox(host.services.translate(text).view()));
}

void WatermarkDlg::loadColour(Dom::INode& values) {
  if (!colourCapable) {
    setColour(black);
    selectColour(black);
  }
  const std::u16string colour = colourCapable ? fieldText(values, Field::colour).str() : std::u16string(black);
  if (!selectColour(colour)) applyCustomColour(colourOf(colour));
  if (blackOnly) setEnabled(WidgetId::colourList, false);
}

// Keeps a face that is not installed, with no entry selected: another machine may have it.
void WatermarkDlg::loadFont(Dom::INode& values) {
  const WString face = fieldText(values, Field::fontname);
  const auto faces = widget<ComboBox>(WidgetId::fontName);
  if (faces && !faces->selectValue(face)) faces->select(-1);
  applyFontName(face);

  const WString style = fieldText(values, Field::fontstyle);
  if (const auto styles = widget<ComboBox>(WidgetId::fontStyle)) styles->selectValue(style);
  applyFontStyle(style);

  const WString size = fieldText(values, Field::fontsize);
  put(widget<TextBox>(WidgetId::fontSize), size);
  applyFontSize(size);
}

// The box's handler applies the text; without a box, this does.
void WatermarkDlg::loadAngle(Dom::INode& values) {
  const WString angle = fieldText(values, Field::angle);
  angleIdle = false;
  if (const auto box = widget<IntegerTextBox>(WidgetId::angle)) box->setText(angle);
  applyAngleText(angle);
  angleIdle = true;
}

void WatermarkDlg::loadPrintStyle(Dom::INode& values) {
  const WString style = fieldText(values, Field::printStyle);
  const bool isTransparent = style.view() == PrintStyle::transparency;
  const bool isOutline = style.view() == PrintStyle::outline;
  const Name radio = isTransparent ? WidgetId::printTransparent
                     : isOutline   ? WidgetId::printOutline
                                   : WidgetId::printSolid;
  if (const auto button = widget<RadioButton>(radio)) button->setChecked(true);

  const auto box = widget<TextBox>(WidgetId::opacity);
  if (isTransparent) {
    const WString intensity = fieldText(*values.child(Field::transparency), Field::intensity);
    opacityIdle = false;
    if (box) box->setText(intensity);
    applyOpacityText(intensity);
    opacityIdle = true;
  } else {
    // The initial value when the user chooses transparency.
    moveOpacityBar(50);
    put(box, u"50");
  }
  applyPrintStyle(radio);
}

void WatermarkDlg::onRestoreDefaults(EventArg<Button>) {
  const Node own = record->child(Field::defaultSetting);
  loadWatermark(own ? own : noneRecord(host.services, {}));
  if (fieldText(*record, Field::label).empty() && fieldText(*record, Field::stylename).empty()) styleNameEdited = false;
}

}  // namespace Kiln::XUL
