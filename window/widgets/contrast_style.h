// The desktop's style, with edges that are seen where the desktop's colours are black, and without icons on the buttons
// of dialogs, which the plug-in's dialogs do not have either.
#pragma once

#include <QProxyStyle>

namespace Window {

class ContrastStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override;
};

// Makes this the application's style; does nothing when it is.
void useContrastStyle();

}  // namespace Window
