// How the mouse moves and turns a watermark in its view.
#include "window/page/paper.h"
#include "window/widgets/watermark_view.h"

#include <QLineF>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Window {
namespace {

constexpr double knobDistance = 20;
constexpr double spotRadius = 4;

// Around what has the desktop's highlight, which may be any colour, on paper.
constexpr QColor markEdge(0, 0, 0, 170);

// How far beside the watermark and its handle the mouse still takes them.
constexpr double gripMargin = 5;

constexpr Press::Down placeRows[] = {Press::Down::upper, Press::Down::centre, Press::Down::lower};
constexpr Press::Across placeColumns[] = {Press::Across::left, Press::Across::centre, Press::Across::right};

// Of three, from 0.
int indexOf(Press::Down down) { return down == Press::Down::upper ? 0 : down == Press::Down::centre ? 1 : 2; }
int indexOf(Press::Across across) {
  return across == Press::Across::left ? 0 : across == Press::Across::centre ? 1 : 2;
}

// Degrees counter-clockwise from one direction to another, from -180 to 180.
double turnBetween(const QPointF& centre, const QPointF& from, const QPointF& to) {
  const double degrees = QLineF(centre, from).angleTo(QLineF(centre, to));
  return degrees > 180 ? degrees - 360 : degrees;
}

}  // namespace

void WatermarkView::letMove() {
  isMovable = true;
  setMouseTracking(true);
}

// Counter-clockwise, from -180 to 180.
int WatermarkView::angle() const {
  const int clockwise = static_cast<int>(std::lround(watermark.angle)) % 360;
  return clockwise > 180 ? 360 - clockwise : -clockwise;
}

QPointF WatermarkView::spotOf(Press::Down down, Press::Across across) const {
  const QRectF whole = sheet();
  return {whole.left() + whole.width() * (2 * indexOf(across) + 1) / 6,
          whole.top() + whole.height() * (2 * indexOf(down) + 1) / 6};
}

QPointF WatermarkView::centreOfMark() const { return placement(sheet()).map(bounds.center()); }

// Above the middle of the text, as it is turned, but never outside the view.
std::optional<QPointF> WatermarkView::handle() const {
  if (!turnable || parts.empty() || !refusal.isEmpty()) return std::nullopt;
  const QTransform place = placement(sheet());
  const QPointF centre = place.map(bounds.center());
  QLineF stem(centre, place.map(QPointF(bounds.center().x(), bounds.bottom())));
  if (stem.length() == 0) return std::nullopt;
  stem.setLength(stem.length() + knobDistance);
  const double edge = knobRadius + 2;
  return QPointF(std::clamp(stem.p2().x(), edge, std::max(edge, width() - edge)),
                 std::clamp(stem.p2().y(), edge, std::max(edge, height() - edge)));
}

std::optional<WatermarkView::Grip::Kind> WatermarkView::gripAt(const QPointF& place) const {
  if (const auto knob = handle(); knob && QLineF(*knob, place).length() <= knobRadius + gripMargin)
    return Grip::Kind::turns;
  if (!isMovable || parts.empty()) return std::nullopt;
  const QPointF inText = placement(sheet()).inverted().map(place);
  const double scale = sheet().width() / paper.width();
  const double beside = gripMargin / std::max(scale, 1e-6);
  if (bounds.adjusted(-beside, -beside, beside, beside).contains(inText)) return Grip::Kind::moves;
  return std::nullopt;
}

// The nearest place to where the watermark's own has been dragged. The watermark itself may be as wide as the page.
WatermarkView::Place WatermarkView::wanted() const {
  const QPointF dragged = spotOf(watermark.down, watermark.across) + grip->now - grip->start;
  Place nearest = present();
  double least = std::numeric_limits<double>::infinity();
  for (const Press::Down down : placeRows)
    for (const Press::Across across : placeColumns)
      if (const double length = QLineF(dragged, spotOf(down, across)).length(); length < least) {
        least = length;
        nearest = {down, across};
      }
  return nearest;
}

void WatermarkView::turn() {
  const double turned = grip->angle + turnBetween(grip->centre, grip->start, grip->now);
  const int whole = static_cast<int>(std::lround(turned));
  const int reached = std::clamp(whole, turnable->least, turnable->most);
  if (reached != angle() || reached != whole) Q_EMIT angleWanted(reached, reached != whole);
}

void WatermarkView::mousePressEvent(QMouseEvent* event) {
  const auto kind = event->button() == Qt::LeftButton ? gripAt(event->position()) : std::nullopt;
  if (!kind) return event->ignore();
  grip = Grip{*kind, event->position(), event->position(), centreOfMark(), angle()};
  setCursor(Qt::ClosedHandCursor);
}

void WatermarkView::mouseMoveEvent(QMouseEvent* event) {
  if (!grip) {
    const auto kind = gripAt(event->position());
    return setCursor(!kind                        ? Qt::ArrowCursor
                     : *kind == Grip::Kind::turns ? Qt::PointingHandCursor
                                                  : Qt::OpenHandCursor);
  }
  grip->now = event->position();
  if (grip->kind == Grip::Kind::turns) return turn();
  update();
}

void WatermarkView::mouseReleaseEvent(QMouseEvent* event) {
  if (!grip) return event->ignore();
  const Place place = grip->kind == Grip::Kind::moves ? wanted() : present();
  grip.reset();
  unsetCursor();
  update();
  if (place == present()) return;
  const QChar letters[2] = {"UCL"[indexOf(place.down)], "LCR"[indexOf(place.across)]};
  Q_EMIT placeWanted(QString(letters, 2));
}

// The chosen one of nine places, and while the watermark is dragged, the one that it would get.
void WatermarkView::paintPlaces(QPainter& painter) const {
  const Place chosen = grip && grip->kind == Grip::Kind::moves ? wanted() : present();
  const QColor highlight = palette().color(QPalette::Highlight);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  for (const Press::Down down : placeRows)
    for (const Press::Across across : placeColumns) {
      const bool isChosen = Place{down, across} == chosen;
      painter.setPen(QPen(isChosen ? markEdge : QColor(0, 0, 0, 90), 1));
      painter.setBrush(isChosen ? highlight : QColor(255, 255, 255, 120));
      const double radius = isChosen ? spotRadius + 2 : spotRadius;
      painter.drawEllipse(spotOf(down, across), radius, radius);
    }
  painter.restore();
}

void WatermarkView::paintHandle(QPainter& painter) const {
  const auto knob = handle();
  if (!knob) return;
  const QColor highlight = palette().color(QPalette::Highlight);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const QTransform place = placement(sheet());
  painter.setPen(QPen(highlight, 1, Qt::DashLine));
  painter.drawLine(place.map(QPointF(bounds.center().x(), bounds.bottom())), *knob);
  painter.setPen(QPen(markEdge, 4));
  painter.drawEllipse(*knob, knobRadius, knobRadius);
  painter.setPen(QPen(highlight, 2));
  painter.setBrush(Qt::white);
  painter.drawEllipse(*knob, knobRadius, knobRadius);
  painter.restore();
}

}  // namespace Window
