// A sheet of paper, scaled to fit or zoomed, with keys and a wheel that turn pages. What does not fit is scrolled, or
// dragged by the mouse.
#pragma once

#include "window/page/page_artist.h"
#include "window/page/zoom.h"

#include <QAbstractScrollArea>

#include <optional>

namespace Window {

class PaperView final : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit PaperView(QWidget* parent);

  // The size available for a page, in device pixels.
  QSize room() const;

  // The resolution of the picture wanted, in device pixels per inch; 0 for one that fits the room.
  double resolution() const;

  void show(const PagePicture& newPicture);
  const PagePicture& picture() const { return shown; }

  const Zoom& zoom() const { return scale; }
  void setZoom(const Zoom& newZoom) { zoomAround(newZoom, QRectF(viewport()->rect()).center()); }
  void zoomBy(int steps) { zoomBy(steps, QRectF(viewport()->rect()).center()); }

  // The present factor of the true size, whatever the page fits; 0 without a picture.
  double factor() const;

  // The sheet in the viewport.
  QRectF sheet() const;

  QSize sizeHint() const override;

 Q_SIGNALS:
  // Another picture is wanted.
  void roomChanged();

  // The factor may have changed.
  void zoomChanged();

  void pagesWanted(int forward);
  void endWanted(bool last);

 protected:
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void paintPaper(QPainter& painter) const;
  void zoomBy(int steps, const QPointF& place);
  void zoomAround(const Zoom& newZoom, const QPointF& place);
  void turnByWheel(int delta);
  bool scrollByKey(int key);
  bool isScrollable() const;
  QSizeF sheetSize() const;
  void arrange();

  PagePicture shown;
  Zoom scale;
  int wheel = 0;
  std::optional<QPoint> grabbed;  // where the mouse last was while it drags the sheet
};

}  // namespace Window
