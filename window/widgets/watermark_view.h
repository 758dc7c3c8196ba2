// A preview sheet with a watermark, with the print side's outlines and position. The mouse can drag the watermark to
// another place, and turn it by a handle.
#pragma once

#include "host/widgets/preview.h"
#include "press/marks/watermark.h"

#include <QPainterPath>
#include <QSizeF>
#include <QString>
#include <QWidget>

#include <optional>
#include <vector>

class QCheckBox;

namespace Window {

// Converts a preview's values for the print side. The outline style is separate.
Press::Watermark printedAs(const Refhost::PreviewedWatermark& told, bool isOutlined);

class PageBackdrop;
struct PageOrder;

// The angles that a watermark can be turned to, in degrees counter-clockwise.
struct AngleRange {
  int least;
  int most;
};

class WatermarkView final : public QWidget {
  Q_OBJECT

 public:
  // `paper` is in points.
  WatermarkView(const QSizeF& paper, QWidget* parent);

  void show(const Press::Watermark& newWatermark);

  // Why nothing can be drawn, as one sentence; empty on success.
  const QString& failure() const { return refusal; }

  // Shows the page under the watermark, dimmed; a check box with this text hides it.
  void showPage(const PageOrder& order, const QString& switchText);

  // Whether the page is drawn, or there is none to show.
  bool isSettled() const;

  // Lets the mouse choose a place, and an angle.
  void letMove();
  void letTurn(const AngleRange& angles) { turnable = angles; }

  QSize sizeHint() const override { return {380, 520}; }

  QRectF sheet() const;

  // Where a place's mark is painted, and where the handle that turns the watermark is, if there is one.
  QPointF spotOf(Press::Down down, Press::Across across) const;
  std::optional<QPointF> handle() const;

 Q_SIGNALS:
  // The user has dragged the watermark to the place with this code, such as "UL".
  void placeWanted(const QString& code);

  // The user has turned the watermark to these degrees, counter-clockwise; to more than is possible, if `isLimited`.
  void angleWanted(int degrees, bool isLimited);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  static constexpr double knobRadius = 6;  // of the handle

  struct Part {
    QPainterPath path;  // in points, y upwards
    bool isFilled;
    double lineWidth;
  };

  struct Place {
    Press::Down down;
    Press::Across across;

    friend bool operator==(const Place&, const Place&) = default;
  };

  // What the mouse does, from where.
  struct Grip {
    enum class Kind { moves, turns } kind;
    QPointF start;
    QPointF now;
    QPointF centre;  // of the watermark, at the start
    int angle = 0;   // at the start
  };

  void shape();
  QRect markedArea() const;
  QTransform placement(const QRectF& sheet) const;
  QPointF centreOfMark() const;
  std::optional<Grip::Kind> gripAt(const QPointF& place) const;
  Place present() const { return {watermark.down, watermark.across}; }
  Place wanted() const;
  int angle() const;
  void turn();
  void fitPage();
  void paintPlaces(QPainter& painter) const;
  void paintHandle(QPainter& painter) const;
  void paintMark(QPainter& painter, const QRectF& sheet);
  void paintParts(QPainter& painter) const;

  QSizeF paper;
  PageBackdrop* backdrop = nullptr;
  QCheckBox* pageSwitch = nullptr;
  bool isMovable = false;
  std::optional<AngleRange> turnable;
  std::optional<Grip> grip;
  Press::Watermark watermark;
  std::vector<Part> parts;
  QRectF bounds;
  QString refusal;
};

}  // namespace Window
