#include "window/widgets/watermark_view.h"

#include "press/error.h"
#include "press/marks/place.h"
#include "press/text/outlines.h"
#include "window/language/texts.h"
#include "window/page/paper.h"
#include "window/widgets/readers.h"

#include "window/widgets/page_backdrop.h"

#include <QCheckBox>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Window {
namespace {

Press::Box boxOf(const QRectF& rectangle) {
  return {rectangle.left(), rectangle.top(), rectangle.right(), rectangle.bottom()};
}

QPointF pointOf(const Press::Point& point) { return {point.x, point.y}; }

QPainterPath pathOf(const Press::Path& steps) {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  for (const Press::PathStep& step : steps) {
    switch (step.kind) {
      case Press::PathStep::Kind::move: path.moveTo(pointOf(step.points[0])); break;
      case Press::PathStep::Kind::line: path.lineTo(pointOf(step.points[0])); break;
      case Press::PathStep::Kind::curve:
        path.cubicTo(pointOf(step.points[0]), pointOf(step.points[1]), pointOf(step.points[2]));
        break;
      case Press::PathStep::Kind::close: path.closeSubpath(); break;
    }
  }
  return path;
}

std::uint32_t rgbOf(const std::u16string& colour) {
  const QColor known(toQt(colour));
  return known.isValid() ? known.rgb() & 0xFFFFFF : 0;
}

// Whether both have the same outlines, regardless of position and colour.
bool haveSameShapes(const Press::Watermark& a, const Press::Watermark& b) {
  return a.text == b.text && a.face == b.face && a.isBold == b.isBold && a.isItalic == b.isItalic && a.size == b.size &&
         a.isOutlined == b.isOutlined;
}

}  // namespace

Press::Watermark printedAs(const Refhost::PreviewedWatermark& told, bool isOutlined) {
  Press::Watermark mark;
  mark.text = toQt(told.text).toStdString();
  mark.face = toQt(told.face).toStdString();
  mark.isBold = told.bold;
  mark.isItalic = told.italic;
  mark.size = told.size;
  mark.colour = rgbOf(told.colour);
  mark.angle = 360 - told.rotation;  // clockwise in print
  const char16_t down = told.position.empty() ? u'C' : told.position[0];
  const char16_t across = told.position.size() < 2 ? u'C' : told.position[1];
  mark.down = down == u'U' ? Press::Down::upper : down == u'L' ? Press::Down::lower : Press::Down::centre;
  mark.across = across == u'L' ? Press::Across::left : across == u'R' ? Press::Across::right : Press::Across::centre;
  mark.isOutlined = isOutlined;
  mark.transparency = 100 * (1 - std::clamp(told.opacity, 0.0, 1.0));
  return mark;
}

WatermarkView::WatermarkView(const QSizeF& paperInPoints, QWidget* parent) : QWidget(parent), paper(paperInPoints) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setRole(*this, QAccessible::Graphic);
}

void WatermarkView::show(const Press::Watermark& newWatermark) {
  const bool keepsShapes = haveSameShapes(watermark, newWatermark);
  const Place placeBefore = present();
  const QRect before = markedArea();
  watermark = newWatermark;
  if (!keepsShapes) shape();
  if (isMovable && present() != placeBefore) return update();
  update(before | markedArea());
}

void WatermarkView::showPage(const PageOrder& order, const QString& switchText) {
  backdrop = new PageBackdrop(order, this);
  pageSwitch = new QCheckBox(switchText, this);
  pageSwitch->setObjectName("showsPage");
  pageSwitch->setChecked(true);
  connect(pageSwitch, &QCheckBox::toggled, this, qOverload<>(&QWidget::update));
  connect(backdrop, &PageBackdrop::changed, this, [this] {
    if (!backdrop->points().isEmpty()) paper = backdrop->points();
    update();
  });
  fitPage();
}

bool WatermarkView::isSettled() const { return backdrop == nullptr || backdrop->isSettled(); }

void WatermarkView::fitPage() {
  if (backdrop == nullptr) return;
  const QSize wanted = pageSwitch->sizeHint();
  pageSwitch->setGeometry(roundSheet, height() - wanted.height() - 2, wanted.width(), wanted.height());
  const QSizeF room = QSizeF(width() - 2 * roundSheet, pageSwitch->y() - 2 * roundSheet).expandedTo({1, 1});
  backdrop->fit((room * devicePixelRatioF()).toSize());
}

void WatermarkView::resizeEvent(QResizeEvent*) { fitPage(); }

// The switch is the first widget, but what makes the watermark has the first focus.
void WatermarkView::showEvent(QShowEvent*) {
  if (pageSwitch == nullptr || window()->focusWidget() != nullptr) return;
  QWidget* next = pageSwitch->nextInFocusChain();
  while (next != pageSwitch && (next->focusPolicy() & Qt::TabFocus) == 0) next = next->nextInFocusChain();
  next->setFocus();
}

QRectF WatermarkView::sheet() const {
  const int below = pageSwitch == nullptr ? height() : pageSwitch->y();
  return sheetWithin(QRectF(0, 0, width(), below), devicePixelRatioF(), paper);
}

// The area that the mark may cover, since redrawing a large sheet is slow.
QRect WatermarkView::markedArea() const {
  if (!refusal.isEmpty()) return rect();
  if (parts.empty()) return {};
  QRectF area = placement(sheet()).mapRect(bounds).adjusted(-2, -2, 2, 2);
  if (const auto knob = handle()) {
    const QSizeF around(2 * knobRadius + 4, 2 * knobRadius + 4);
    area |= QRectF(*knob - QPointF(around.width() / 2, around.height() / 2), around);
    area |= QRectF(*knob, centreOfMark()).normalized().adjusted(-2, -2, 2, 2);
  }
  return area.toAlignedRect() & rect();
}

void WatermarkView::shape() {
  parts.clear();
  bounds = {};
  refusal.clear();
  if (!(watermark.size > 0) || !std::isfinite(watermark.size)) return;
  try {
    const Press::Outlines outlines = Press::outlinesOf(watermark);
    for (const Press::OutlinePart& part : outlines.parts)
      parts.push_back({pathOf(part.path), part.isFilled, part.lineWidth});
    const Press::Box& box = outlines.bounds;
    bounds = QRectF(QPointF(box.x0, box.y0), QPointF(box.x1, box.y1));
  } catch (const Press::Error& error) {
    refusal = plainText(QString::fromUtf8(error.what()));
  }
}

void WatermarkView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintDesk(painter, *this);
  const QRectF sheet = this->sheet();
  paintSheet(painter, sheet);
  if (backdrop != nullptr && pageSwitch->isChecked() && !backdrop->image().isNull()) {
    const bool isExact = (sheet.size() * devicePixelRatioF()).toSize() == backdrop->image().size();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !isExact);
    painter.drawImage(sheet, backdrop->image());
  }
  if (!refusal.isEmpty()) {
    painter.setPen(Qt::darkGray);
    painter.drawText(sheet.adjusted(roundSheet, 0, -roundSheet, 0), Qt::AlignCenter | Qt::TextWordWrap, refusal);
  } else if (!parts.empty()) {
    painter.save();
    painter.setClipRect(sheet);
    paintMark(painter, sheet);
    painter.restore();
  }
  if (isMovable) paintPlaces(painter);
  paintHandle(painter);
}

// From the text's points to the view.
QTransform WatermarkView::placement(const QRectF& sheet) const {
  Press::PageFrame page;
  page.visible = boxOf(QRectF(QPointF(), paper));
  const Press::Matrix matrix = Press::placeMark(page, boxOf(bounds), watermark);
  const double scale = sheet.width() / paper.width();
  const QPointF way = grip && grip->kind == Grip::Kind::moves ? grip->now - grip->start : QPointF();
  return QTransform(matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f) *
         QTransform(scale, 0, 0, -scale, sheet.left(), sheet.top() + paper.height() * scale) *
         QTransform::fromTranslate(way.x(), way.y());
}

// Overlapping letters and strokes must not show through each other, as on paper: transparent marks are painted opaque
// first, and then composed as a whole.
void WatermarkView::paintMark(QPainter& painter, const QRectF& sheet) {
  const QTransform place = placement(sheet);
  const double opacity = 1 - watermark.transparency / 100;
  const bool isOneShape = parts.size() == 1 && (!parts[0].isFilled || parts[0].lineWidth <= 0);
  if (opacity >= 1 || isOneShape) {
    painter.setOpacity(opacity);
    painter.setTransform(place, true);
    return paintParts(painter);
  }
  const double ratio = devicePixelRatioF();
  const QRectF seen = place.mapRect(bounds).intersected(sheet);
  const QRect pixels = QRectF(seen.topLeft() * ratio, seen.size() * ratio).toAlignedRect();
  const QPointF corner = QPointF(pixels.topLeft()) / ratio;
  QImage layer(pixels.size().expandedTo({1, 1}), QImage::Format_ARGB32_Premultiplied);
  layer.setDevicePixelRatio(ratio);
  layer.fill(Qt::transparent);
  QPainter onLayer(&layer);
  onLayer.setTransform(place * QTransform::fromTranslate(-corner.x(), -corner.y()), true);
  paintParts(onLayer);
  onLayer.end();
  painter.setOpacity(opacity);
  painter.drawImage(corner, layer);
}

void WatermarkView::paintParts(QPainter& painter) const {
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor colour = QColor::fromRgb(watermark.colour);
  for (const Part& part : parts) {
    painter.setPen(part.lineWidth > 0 ? QPen(colour, part.lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin)
                                      : QPen(Qt::NoPen));
    painter.setBrush(part.isFilled ? QBrush(colour) : QBrush(Qt::NoBrush));
    painter.drawPath(part.path);
  }
}

}  // namespace Window
