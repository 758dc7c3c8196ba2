#include "effect/watermark/editor_print_style.h"

#include "effect/watermark/editor_ranges.h"
#include "effect/watermark/numbers.h"

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The preview's opacity of a watermark that is not transparent.
constexpr double opaque = 100.0;

// The initial transparency when the user chooses that style.
constexpr std::int32_t initialPercent = 50;

constexpr Name opacityWidgets[] = {WidgetId::opacity,       WidgetId::opacityBar,  WidgetId::opacityLeast,
                                   WidgetId::opacityMiddle, WidgetId::opacityMost, WidgetId::opacityUnit};

}  // namespace

// The record has the transparency that the bar shows, even if the host fails to show it elsewhere.
EditorPrintStyle::EditorPrintStyle(const EditorContext& shared)
    : editor(shared),
      transparency(
          0, percentOf, [this](std::int32_t percent) { applyTransparency(percent); },
          [this](std::int32_t percent) { setIntensity(percent); }) {}

void EditorPrintStyle::connectWidgets() {
  for (const Name id : {WidgetId::printSolid, WidgetId::printTransparent, WidgetId::printOutline})
    if (const auto radio = editor.widget<RadioButton>(id))
      connect(*radio->clickSignal(), *this, &EditorPrintStyle::onPrintStyle);
  transparency.connectWidgets(editor.widget<TextBox>(WidgetId::opacity),
                              editor.widget<ScrollBar>(WidgetId::opacityBar));
}

void EditorPrintStyle::load(Dom::INode& values) {
  const WString style = fieldText(values, Field::printStyle);
  const bool isTransparent = style.view() == PrintStyle::transparency;
  const bool isOutline = style.view() == PrintStyle::outline;
  const Name radio = isTransparent ? WidgetId::printTransparent
                     : isOutline   ? WidgetId::printOutline
                                   : WidgetId::printSolid;
  if (const auto button = editor.widget<RadioButton>(radio)) button->setChecked(true);
  if (isTransparent)
    transparency.load(fieldText(*values.child(Field::transparency), Field::intensity));
  else
    transparency.show(initialPercent);
  applyPrintStyle(radio);
}

void EditorPrintStyle::onPrintStyle(EventArg<Toggle> event) { applyPrintStyle(event.source().id()); }

void EditorPrintStyle::applyPrintStyle(WStringView radio) {
  const bool isOutline = radio.view() == WidgetId::printOutline;
  const bool isTransparent = radio.view() == WidgetId::printTransparent;
  setField(*editor.record, Field::printStyle,
           isOutline       ? PrintStyle::outline
           : isTransparent ? PrintStyle::transparency
                           : PrintStyle::solid);
  for (const Name id : opacityWidgets) editor.setEnabled(id, isTransparent);
  if (!isTransparent) {
    setIntensity(0);
    if (editor.preview) editor.preview->setOpacity(opaque);
    return;
  }
  const auto shown = transparency.barNumber();
  const std::int32_t percent = shown ? *shown : intensity();
  transparency.show(percent);
  applyTransparency(percent);
}

void EditorPrintStyle::applyTransparency(std::int32_t percent) {
  setIntensity(percent);
  if (editor.preview) editor.preview->setOpacity((100 - percent) / 100.0);
}

std::int32_t EditorPrintStyle::intensity() const {
  return percentOf(fieldText(*editor.record->childOrNew(Field::transparency), Field::intensity).view()).value_or(0);
}

void EditorPrintStyle::setIntensity(std::int32_t percent) const {
  setField(*editor.record->childOrNew(Field::transparency), Field::intensity, decimalText(percent));
}

}  // namespace Kiln::XUL
