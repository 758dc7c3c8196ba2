// A preview sheet with a watermark, with the print side's outlines and position.
#pragma once

#include "host/widgets/preview.h"
#include "press/marks/watermark.h"

#include <QPainterPath>
#include <QSizeF>
#include <QString>
#include <QWidget>

#include <vector>

namespace Window {

// Converts a preview's values for the print side. The outline style is separate.
Press::Watermark printedAs(const Refhost::PreviewedWatermark& told, bool isOutlined);

class WatermarkView final : public QWidget {
  Q_OBJECT

 public:
  // `paper` is in points.
  WatermarkView(const QSizeF& paper, QWidget* parent);

  void show(const Press::Watermark& newWatermark);

  // Why nothing can be drawn, as one sentence; empty on success.
  const QString& failure() const { return refusal; }

  QSize sizeHint() const override { return {380, 520}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Part {
    QPainterPath path;  // in points, y upwards
    bool isFilled;
    double lineWidth;
  };

  void shape();
  QRect markedArea() const;
  QTransform placement(const QRectF& sheet) const;
  void paintMark(QPainter& painter, const QRectF& sheet);
  void paintParts(QPainter& painter) const;

  QSizeF paper;
  Press::Watermark watermark;
  std::vector<Part> parts;
  QRectF bounds;
  QString refusal;
};

}  // namespace Window
