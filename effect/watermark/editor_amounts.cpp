// The angle, and the print style: solid, outline or transparent.
//
// Angle and transparency have a text box and a scroll bar each, which update each other; see the flags in editor.h.
#include "effect/watermark/editor.h"
#include "effect/watermark/editor_values.h"
#include "effect/watermark/numbers.h"

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The angle at the lowest position of the scroll bar.
constexpr std::int32_t leastAngle = -90;

// The preview's opacity of a watermark that is not transparent.
constexpr double opaque = 100.0;

constexpr Name opacityWidgets[] = {WidgetId::opacity,       WidgetId::opacityBar,  WidgetId::opacityLeast,
                                   WidgetId::opacityMiddle, WidgetId::opacityMost, WidgetId::opacityUnit};

double opacityOf(std::int32_t percent) { return (100 - percent) / 100.0; }

}  // namespace

void WatermarkDlg::connectAngle() {
  if (const auto box = widget<IntegerTextBox>(WidgetId::angle)) {
    box->setMaximumLength(3);
    connect(*box->typingSignal(), *this, &WatermarkDlg::onAngleText);
    connect(*box->pastingSignal(), *this, &WatermarkDlg::onAngleText);
    connect(*box->blurSignal(), *this, &WatermarkDlg::onAngleFocusLost);
  }
  if (const auto bar = widget<ScrollBar>(WidgetId::angleBar))
    connect(*bar->scrollSignal(), *this, &WatermarkDlg::onAngleScroll);
}

void WatermarkDlg::onAngleText(SmartPtr<TextChangeEventArg> change) {
  angleIdle = false;
  if (!applyAngleText(change->text())) change->refuse();
  angleIdle = true;
}

void WatermarkDlg::onAngleFocusLost(EventArg<TextBox> event) {
  const WString text = event.source().text();
  event.source().setText(text);
  applyAngleText(text);
}

void WatermarkDlg::onAngleScroll(EventArg<ScrollBar> event) {
  if (inAngleText) return;
  angleIdle = false;
  const std::u16string text = decimalText(event.source().position() + leastAngle);
  if (const auto box = widget<IntegerTextBox>(WidgetId::angle)) box->setText(text);
  applyAngleText(text);
  angleIdle = true;
}

bool WatermarkDlg::applyAngleText(WStringView text) {
  if (angleIdle) return true;
  const auto angle = angleOf(text);
  if (!angle) return false;
  if (const auto bar = widget<ScrollBar>(WidgetId::angleBar)) {
    inAngleText = true;
    bar->setPosition(*angle - leastAngle);
    inAngleText = false;
  }
  setField(*record, Field::angle, decimalText(*angle));
  if (preview) preview->setRotation(*angle < 0 ? *angle + 360 : *angle);
  return true;
}

void WatermarkDlg::connectPrintStyles() {
  for (const Name id : {WidgetId::printSolid, WidgetId::printTransparent, WidgetId::printOutline})
    if (const auto radio = widget<RadioButton>(id)) connect(*radio->clickSignal(), *this, &WatermarkDlg::onPrintStyle);
}

void WatermarkDlg::connectOpacity() {
  if (const auto box = widget<TextBox>(WidgetId::opacity)) {
    box->setMaximumLength(3);
    connect(*box->typingSignal(), *this, &WatermarkDlg::onOpacityText);
    connect(*box->pastingSignal(), *this, &WatermarkDlg::onOpacityText);
    connect(*box->blurSignal(), *this, &WatermarkDlg::onOpacityFocusLost);
  }
  if (const auto bar = widget<ScrollBar>(WidgetId::opacityBar))
    connect(*bar->scrollSignal(), *this, &WatermarkDlg::onOpacityScroll);
}

void WatermarkDlg::onPrintStyle(EventArg<Toggle> event) { applyPrintStyle(event.source().id()); }

void WatermarkDlg::applyPrintStyle(WStringView radio) {
  const bool isOutline = radio.view() == WidgetId::printOutline;
  const bool isTransparent = radio.view() == WidgetId::printTransparent;
  setField(*record, Field::printStyle,
           isOutline       ? PrintStyle::outline
           : isTransparent ? PrintStyle::transparency
                           : PrintStyle::solid);
  for (const Name id : opacityWidgets) setEnabled(id, isTransparent);
  if (!isTransparent) {
    setIntensity(0);
    if (preview) preview->setOpacity(opaque);
    return;
  }
  const auto bar = widget<ScrollBar>(WidgetId::opacityBar);
  const std::int32_t percent = bar ? bar->position() : intensity();
  moveOpacityBar(percent);
  put(widget<TextBox>(WidgetId::opacity), decimalText(percent));
  setIntensity(percent);
  if (preview) preview->setOpacity(opacityOf(percent));
}

void WatermarkDlg::onOpacityText(SmartPtr<TextChangeEventArg> change) {
  if (inOwnText) return;
  opacityIdle = false;
  if (!applyOpacityText(change->text())) change->refuse();
  opacityIdle = true;
}

void WatermarkDlg::onOpacityFocusLost(EventArg<TextBox> event) {
  const WString text = event.source().text();
  event.source().setText(text);
  applyOpacityText(text);
}

void WatermarkDlg::onOpacityScroll(EventArg<ScrollBar> event) {
  if (inOpacityText) return;
  opacityIdle = false;
  const std::int32_t percent = event.source().position();
  setIntensity(percent);
  if (const auto box = widget<TextBox>(WidgetId::opacity)) box->setText(decimalText(percent));
  applyOpacityText(decimalText(percent));
  opacityIdle = true;
}

bool WatermarkDlg::applyOpacityText(WStringView text) {
  if (opacityIdle) return true;
  const auto percent = percentOf(text);
  if (!percent) return false;
  moveOpacityBar(*percent);
  setIntensity(*percent);
  if (preview) preview->setOpacity(opacityOf(*percent));
  return true;
}

std::int32_t WatermarkDlg::intensity() const {
  return percentOf(fieldText(*record->childOrNew(Field::transparency), Field::intensity).view()).value_or(0);
}

void WatermarkDlg::setIntensity(std::int32_t percent) {
  setField(*record->childOrNew(Field::transparency), Field::intensity, decimalText(percent));
}

void WatermarkDlg::moveOpacityBar(std::int32_t percent) {
  const auto bar = widget<ScrollBar>(WidgetId::opacityBar);
  if (!bar) return;
  inOpacityText = true;
  bar->setPosition(percent);
  inOpacityText = false;
}

}  // namespace Kiln::XUL
