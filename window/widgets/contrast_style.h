// The desktop's style, with edges that are seen where the desktop's colours are dark, with texts in their own direction
// in a window from right to left, and without icons on the buttons of dialogs, which the plug-in's dialogs do not have
// either.
#pragma once

#include <QProxyStyle>

namespace Window {

class ContrastStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override;

  void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool isEnabled,
                    const QString& text, QPalette::ColorRole role) const override;

 private:
  void drawSpinBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
  void drawSlider(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
  void drawScrollBar(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
};

// Makes this the application's style; does nothing when it is.
void useContrastStyle();

}  // namespace Window
