#include "window/page/paper.h"

#include "formats/papers.h"

#include <QPainter>
#include <QWidget>

#include <cmath>

namespace Window {
namespace {

constexpr int shadowWidth = 10;

}  // namespace

QSizeF paperOf(std::u16string_view name) {
  const Formats::Paper paper = Formats::paperOf(name);
  return {paper.width, paper.height};
}

QRectF sheetWithin(const QWidget& view, const QSizeF& shape) {
  return sheetWithin(QRectF(view.rect()), view.devicePixelRatioF(), shape);
}

QRectF sheetWithin(const QRectF& part, double ratio, const QSizeF& shape) {
  const QSizeF room = (part.size() - QSizeF(2 * roundSheet, 2 * roundSheet)).expandedTo({1, 1});
  const QSizeF pixels = (shape.scaled(room, Qt::KeepAspectRatio) * ratio).toSize().expandedTo({1, 1});
  const QSizeF sheet = pixels / ratio;
  const auto onPixel = [ratio](double place) { return std::round(place * ratio) / ratio; };
  return {QPointF(onPixel(part.left() + (part.width() - sheet.width()) / 2),
                  onPixel(part.top() + (part.height() - sheet.height()) / 2)),
          sheet};
}

void paintDesk(QPainter& painter, const QWidget& view) {
  const QColor window = view.palette().color(QPalette::Window);
  const bool isDark = window.lightness() < 128;
  painter.fillRect(view.rect(), isDark ? window.darker(140) : window.darker(112));
}

void paintSheet(QPainter& painter, const QRectF& sheet) {
  painter.save();
  painter.setPen(Qt::NoPen);
  painter.save();
  // The sheet hides most of its shadow.
  const QRect around = sheet.adjusted(-shadowWidth, -shadowWidth, shadowWidth, shadowWidth + 3).toAlignedRect();
  const QRect hidden = sheet.toAlignedRect().adjusted(1, 1, -1, -1);
  painter.setClipRegion(QRegion(around) - QRegion(hidden), Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  for (int i = shadowWidth; i > 0; --i) {
    painter.setBrush(QColor(0, 0, 0, 5));
    painter.drawRoundedRect(sheet.adjusted(-i, -i + 3, i, i + 3), i, i);
  }
  painter.restore();
  painter.fillRect(sheet, Qt::white);
  const double pixel = 1 / painter.device()->devicePixelRatioF();
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(0, 0, 0, 70), 0));
  painter.drawRect(sheet.adjusted(-pixel, -pixel, 0, 0));
  painter.restore();
}

}  // namespace Window
