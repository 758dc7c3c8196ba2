#include "effect/watermark/editor_colour.h"

#include "effect/screen_scale.h"
#include "effect/watermark/editor_ranges.h"

#include <cmath>

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The custom colour's entry, which has no colour until one is picked, and its index in layouts.
constexpr Name customColour = u"custom";
constexpr std::int32_t customColourIndex = 10;

}  // namespace

void EditorColour::connectWidgets() {
  support = supportOfModel();
  const auto caption = editor.dialog->widgetById(WidgetId::colourCaption);
  editor.widget<ComboBox>(WidgetId::blackMark);  // layouts may have it; nothing depends on it
  const auto picker = editor.widget<ColorPicker>(WidgetId::colourPicker);
  const auto colours = editor.widget<ComboBox>(WidgetId::colourList);
  const bool isBlackOnly = support == Support::blackOnly;
  if (picker && !isBlackOnly) connect(*picker->changeSignal(), *this, &EditorColour::onCustomColour);
  if (picker && isBlackOnly) picker->disable();
  if (colours) {
    showSwatches(*colours);
    connect(*colours->changeSignal(), *this, &EditorColour::onColourSelect);
  }
  if (support == Support::all) return;
  const auto monochrome = editor.host.properties->modelProperties()->child(Prop::monochromeModel);
  const bool isMonochrome = monochrome && monochrome->equals(Value::yes);
  const SmartPtr<Widget> controls[] = {picker, colours, caption};
  for (const auto& control : controls)
    if (control) control->disable();
  for (const auto& control : controls)
    if (control && isMonochrome) control->hide();
}

EditorColour::Support EditorColour::supportOfModel() const {
  const auto allows = [this](Name colour) {
    return editor.host.properties->valueAllowed(Prop::watermarkColor, colour);
  };
  if (!allows(Value::colourBlack)) return Support::none;
  return allows(Value::colourNonBlack) ? Support::all : Support::blackOnly;
}

void EditorColour::showSwatches(ComboBox& colours) const {
  const auto items = colours.data();
  for (std::int32_t i = 0; i < items->count(); ++i) {
    const WString colour = items->at(i)->value();
    if (colour.view() == customColour) continue;
    if (const auto image = swatch(colour)) items->at(i)->setImage(image);
  }
  colours.setData(items);
}

void EditorColour::load(Dom::INode& values) {
  const bool hasColours = support == Support::all;
  if (!hasColours) {
    setColour(black);
    selectColour(black);
  }
  const std::u16string colour = hasColours ? fieldText(values, Field::colour).str() : std::u16string(black);
  if (!selectColour(colour)) applyCustomColour(colourOf(colour));
  if (support == Support::blackOnly) editor.setEnabled(WidgetId::colourList, false);
}

// The custom entry cannot be selected before it has a colour: the record keeps its own.
void EditorColour::onColourSelect(EventArg<ComboBox> event) {
  const auto item = event.source().selectedItem();
  if (!item) return;
  if (isColour(item->value().view()))
    applyColourItem(*item);
  else
    event.source().selectValue(fieldText(*editor.record, Field::colour));
}

void EditorColour::onCustomColour(EventArg<ColorPicker> event) { applyCustomColour(event.source().colour()); }

void EditorColour::applyColourItem(ListItem& item) {
  const WString value = item.value();
  std::u16string colour = u"#";
  colour += value.view().substr(1, 6);
  setColour(colour);
  const auto custom = customColourItem();
  if (custom && custom->value().view() == customColour) custom->setFlag(true);
}

void EditorColour::applyCustomColour(std::uint32_t colour) {
  const std::u16string text = colourText(colour);
  setColour(text);
  const auto custom = customColourItem();
  if (!custom) return;
  custom->setValue(text);
  if (const auto image = swatch(text)) custom->setImage(image);

  // The flag: set while there is no colour, then cleared.
  custom->setFlag(true);
  custom->setFlag(false);
  const auto colours = editor.widget<ComboBox>(WidgetId::colourList);
  colours->setData(colours->data());
  colours->select(customColourIndex);
}

void EditorColour::setColour(WStringView colour) {
  setField(*editor.record, Field::colour, colour);
  if (editor.preview) editor.preview->setColour(colour);
}

// False when there is no such entry.
bool EditorColour::selectColour(WStringView colour) {
  const auto colours = editor.widget<ComboBox>(WidgetId::colourList);
  if (!colours || !colours->selectValue(colour)) return false;
  applyColourItem(*colours->selectedItem());
  return true;
}

SmartPtr<ListItem> EditorColour::customColourItem() const {
  const auto colours = editor.widget<ComboBox>(WidgetId::colourList);
  return colours ? colours->data()->at(customColourIndex) : SmartPtr<ListItem>();
}

SmartPtr<Image> EditorColour::swatch(WStringView colour) const {
  const auto list = editor.watermarkList();
  const float scale = list ? screenScaleFactor(list->nativeWindow()) : 1.0F;
  const auto side = static_cast<std::int32_t>(std::lround(15.0F * scale));
  return editor.host.services.swatch(colour, side, side);
}

}  // namespace Kiln::XUL
