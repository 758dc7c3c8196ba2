// Colour, face, style, size and position of the text.
#include "effect/screen_scale.h"
#include "effect/watermark/editor.h"
#include "effect/watermark/editor_values.h"
#include "effect/watermark/numbers.h"

#include <cmath>

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The custom colour's entry, which has no colour until one is picked, and its index in layouts.
constexpr Name customColour = u"custom";
constexpr std::int32_t customColourIndex = 10;

}  // namespace

void WatermarkDlg::connectColours() {
  const auto caption = dialog->widgetById(WidgetId::colourCaption);
  const auto picker = widget<ColorPicker>(WidgetId::colourPicker);
  const auto colours = widget<ComboBox>(WidgetId::colourList);
  if (picker && !blackOnly) connect(*picker->changeSignal(), *this, &WatermarkDlg::onCustomColour);
  if (picker && blackOnly) picker->disable();
  if (colours) {
    const auto items = colours->data();
    for (std::int32_t i = 0; i < items->count(); ++i) {
      const WString colour = items->at(i)->value();
      if (colour.view() == customColour) continue;
      if (const auto image = swatch(colour)) items->at(i)->setImage(image);
    }
    colours->setData(items);
    connect(*colours->changeSignal(), *this, &WatermarkDlg::onColourSelect);
  }
  if (colourCapable) return;
  const auto monochrome = host.properties->modelProperties()->child(Prop::monochromeModel);
  const bool isMonochrome = monochrome && monochrome->equals(Value::yes);
  const SmartPtr<Widget> controls[] = {picker, colours, caption};
  for (const auto& control : controls)
    if (control) control->disable();
  for (const auto& control : controls)
    if (control && isMonochrome) control->hide();
}

// The custom entry cannot be selected before it has a colour: the record keeps its own.
void WatermarkDlg::onColourSelect(EventArg<ComboBox> event) {
  const auto item = event.source().selectedItem();
  if (!item) return;
  if (isColour(item->value().view()))
    applyColourItem(*item);
  else
    event.source().selectValue(fieldText(*record, Field::colour));
}

void WatermarkDlg::onCustomColour(EventArg<ColorPicker> event) { applyCustomColour(event.source().colour()); }

void WatermarkDlg::applyColourItem(ListItem& item) {
  const WString value = item.value();
  setColour(u"#" + std::u16string(value.view().substr(1, 6)));
  const auto custom = customColourItem();
  if (custom && custom->value().view() == customColour) custom->setFlag(true);
}

void WatermarkDlg::applyCustomColour(std::uint32_t colour) {
  const std::u16string text = colourText(colour);
  setColour(text);
  const auto custom = customColourItem();
  if (!custom) return;
  custom->setValue(text);
  if (const auto image = swatch(text)) custom->setImage(image);

  // The flag: set while there is no colour, then cleared.
  custom->setFlag(true);
  custom->setFlag(false);
  const auto colours = widget<ComboBox>(WidgetId::colourList);
  colours->setData(colours->data());
  colours->select(customColourIndex);
}

void WatermarkDlg::setColour(WStringView colour) {
  setField(*record, Field::colour, colour);
  if (preview) preview->setColour(colour);
}

// False when there is no such entry.
bool WatermarkDlg::selectColour(WStringView colour) {
  const auto colours = widget<ComboBox>(WidgetId::colourList);
  if (!colours || !colours->selectValue(colour)) return false;
  applyColourItem(*colours->selectedItem());
  return true;
}

SmartPtr<ListItem> WatermarkDlg::customColourItem() {
  const auto colours = widget<ComboBox>(WidgetId::colourList);
  return colours ? colours->data()->at(customColourIndex) : SmartPtr<ListItem>();
}

SmartPtr<Image> WatermarkDlg::swatch(WStringView colour) {
  const auto list = watermarkList();
  const float scale = list ? screenScaleFactor(list->nativeWindow()) : 1.0F;
  const auto side = static_cast<std::int32_t>(std::lround(15.0F * scale));
  return host.services.swatch(colour, side, side);
}

void WatermarkDlg::connectFont() {
  if (const auto styles = widget<ComboBox>(WidgetId::fontStyle))
    connect(*styles->changeSignal(), *this, &WatermarkDlg::onFontStyle);
  const auto size = widget<TextBox>(WidgetId::fontSize);
  if (!size) return;
  connect(*size->typingSignal(), *this, &WatermarkDlg::onFontSizeText);
  connect(*size->pastingSignal(), *this, &WatermarkDlg::onFontSizeText);
  connect(*size->blurSignal(), *this, &WatermarkDlg::onFontSizeFocusLost);
}

void WatermarkDlg::fillFontNames() {
  const auto faces = widget<ComboBox>(WidgetId::fontName);
  const auto installed = host.services.fontNames();
  if (!faces || !installed) return;
  faces->setSorted(true);
  const auto items = faces->data();
  for (std::int32_t i = 0; i < installed->count(); ++i) items->append(installed->at(i), installed->at(i));
  faces->setData(items);
  connect(*faces->changeSignal(), *this, &WatermarkDlg::onFontName);
}

void WatermarkDlg::onFontName(EventArg<ComboBox> event) {
  if (const auto item = event.source().selectedItem()) applyFontName(item->value());
}

void WatermarkDlg::applyFontName(WStringView face) {
  setField(*record, Field::fontname, face);
  if (preview) preview->setFontFace(face);
}

void WatermarkDlg::onFontStyle(EventArg<ComboBox> event) {
  if (const auto item = event.source().selectedItem()) applyFontStyle(item->value());
}

void WatermarkDlg::applyFontStyle(WStringView style) {
  const bool isBoth = style.view() == FontStyle::boldItalic;
  if (preview) {
    preview->setBold(isBoth || style.view() == FontStyle::bold);
    preview->setItalic(isBoth || style.view() == FontStyle::italic);
  }
  setField(*record, Field::fontstyle, style);
}

// Accepts any input; an invalid size is replaced when the box loses the focus, and on OK.
void WatermarkDlg::onFontSizeText(SmartPtr<TextChangeEventArg> change) {
  if (!inOwnText && !change->isProvisional()) applyFontSize(change->text());
}

void WatermarkDlg::onFontSizeFocusLost(EventArg<TextBox> event) {
  if (isFontSize(event.source().text().view())) return;
  put(&event.source(), leastFontSize);
  applyFontSize(leastFontSize);
}

void WatermarkDlg::applyFontSize(WStringView text) {
  if (preview) preview->setFontSize(leadingNumber(text));
  setField(*record, Field::fontsize, text);
}

void WatermarkDlg::onPositionButton(EventArg<Button> event) { applyPosition(event.source().id()); }

void WatermarkDlg::applyPosition(WStringView code) {
  if (preview) preview->setPosition(code);
  setField(*record, Field::positionX, code.view().substr(1, 1));
  setField(*record, Field::positionY, code.view().substr(0, 1));
}

}  // namespace Kiln::XUL
