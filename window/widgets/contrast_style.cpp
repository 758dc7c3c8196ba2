#include "window/widgets/contrast_style.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>

namespace Window {
namespace {

// Styles draw edges darker than the window, which on black is nothing.
bool hidesEdges(const QPalette& palette) {
  constexpr int darkest = 16;
  return palette.color(QPalette::Window).lightness() < darkest;
}

void drawEdge(const QStyleOption& option, const QRect& around, bool isRound, QPainter& painter) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, isRound);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(option.palette.color(QPalette::WindowText));
  const QRectF edge = QRectF(around).adjusted(0.5, 0.5, -0.5, -0.5);
  isRound ? painter.drawEllipse(edge) : painter.drawRect(edge);
  painter.restore();
}

}  // namespace

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (!hidesEdges(option->palette)) return;
  const bool isRound = element == PE_IndicatorRadioButton;
  const bool isBox = element == PE_IndicatorCheckBox || element == PE_FrameLineEdit || element == PE_FrameGroupBox ||
                     element == PE_PanelButtonCommand || element == PE_Frame || element == PE_FrameMenu;
  if (isRound || isBox) drawEdge(*option, option->rect, isRound, *painter);
}

void ContrastStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                       const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (!hidesEdges(option->palette)) return;
  if (control == CC_SpinBox) drawEdge(*option, option->rect, false, *painter);
  if (control == CC_Slider)
    drawEdge(*option, subControlRect(control, option, SC_SliderHandle, widget), false, *painter);
}

int ContrastStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                             QStyleHintReturn* answer) const {
  return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, answer);
}

void useContrastStyle() {
  if (qobject_cast<ContrastStyle*>(QApplication::style()) == nullptr) QApplication::setStyle(new ContrastStyle);
}

}  // namespace Window
