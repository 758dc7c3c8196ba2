// The desktop's style, with edges that are seen where the desktop's colours are black.
#pragma once

#include <QProxyStyle>

namespace Window {

class ContrastStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

// Makes this the application's style; does nothing when it is.
void useContrastStyle();

}  // namespace Window
