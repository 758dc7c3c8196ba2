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

}  // namespace

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (!hidesEdges(option->palette)) return;
  const bool isRound = element == PE_IndicatorRadioButton;
  const bool isBox = element == PE_IndicatorCheckBox || element == PE_FrameLineEdit || element == PE_FrameGroupBox ||
                     element == PE_PanelButtonCommand;
  if (!isRound && !isBox) return;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing, isRound);
  painter->setBrush(Qt::NoBrush);
  painter->setPen(option->palette.color(QPalette::WindowText));
  const QRectF edge = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
  isRound ? painter->drawEllipse(edge) : painter->drawRect(edge);
  painter->restore();
}

void useContrastStyle() {
  if (qobject_cast<ContrastStyle*>(QApplication::style()) == nullptr) QApplication::setStyle(new ContrastStyle);
}

}  // namespace Window
