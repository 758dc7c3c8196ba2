#include "window/page/paper_view.h"

#include "window/page/paper.h"
#include "window/widgets/readers.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>

namespace Window {
namespace {

constexpr int notchOfWheel = 120;
constexpr int lineOfScrolling = 40;

// No limit for the height of a page that fits by its width.
constexpr int anyHeight = 1 << 20;

bool isNearly(const QSize& one, const QSize& other) {
  return std::abs(one.width() - other.width()) <= 2 && std::abs(one.height() - other.height()) <= 2;
}

}  // namespace

PaperView::PaperView(QWidget* parent) : QAbstractScrollArea(parent) {
  setRole(*this, QAccessible::Graphic);
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(QFrame::NoFrame);
  setMinimumSize(260, 260);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  arrange();
}

QSize PaperView::sizeHint() const { return {430, 560}; }

QSize PaperView::room() const {
  const QSizeF inside = QSizeF(viewport()->size()) - QSizeF(2 * roundSheet, 2 * roundSheet);
  const QSize pixels = (inside * devicePixelRatioF()).toSize().expandedTo({1, 1});
  return scale.kind == Zoom::Kind::width ? QSize(pixels.width(), anyHeight) : pixels;
}

double PaperView::resolution() const {
  return scale.kind == Zoom::Kind::size ? scale.factor * logicalDpiX() * devicePixelRatioF() : 0;
}

double PaperView::factor() const {
  if (scale.kind == Zoom::Kind::size) return scale.factor;
  const double inches = shown.millimetres.width() / millimetresPerInch;
  return inches > 0 ? sheetSize().width() / inches / logicalDpiX() : 0;
}

void PaperView::show(const PagePicture& newPicture) {
  shown = newPicture;
  arrange();
  viewport()->update();
  Q_EMIT zoomChanged();
}

// A picture of the wanted size is drawn pixel by pixel; an outdated one is scaled until the next arrives.
QSizeF PaperView::sheetSize() const {
  const double ratio = devicePixelRatioF();
  QSizeF pixels;
  if (scale.kind == Zoom::Kind::size) {
    pixels = shown.millimetres / millimetresPerInch * resolution();
  } else {
    const QSizeF shape = shown.millimetres.isEmpty() ? QSizeF(shown.image.size()) : shown.millimetres;
    pixels = shape.scaled(room(), Qt::KeepAspectRatio);
  }
  const QSize whole = pixels.toSize().expandedTo({1, 1});
  return QSizeF(isNearly(whole, shown.image.size()) ? shown.image.size() : whole) / ratio;
}

QRectF PaperView::sheet() const {
  const double ratio = devicePixelRatioF();
  const auto place = [ratio](double size, int view, int scrolled) {
    const double start = size + 2 * roundSheet <= view + 2 ? (view - size) / 2 : roundSheet - scrolled;
    return std::round(start * ratio) / ratio;
  };
  const QSizeF size = sheetSize();
  return {QPointF(place(size.width(), viewport()->width(), horizontalScrollBar()->value()),
                  place(size.height(), viewport()->height(), verticalScrollBar()->value())),
          size};
}

// The bar beside a page that fits by its width is always there: otherwise the width would depend on the bar, and the
// bar on the width.
void PaperView::arrange() {
  const bool hasSize = scale.kind == Zoom::Kind::size;
  setHorizontalScrollBarPolicy(hasSize ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(hasSize                           ? Qt::ScrollBarAsNeeded
                             : scale.kind == Zoom::Kind::width ? Qt::ScrollBarAlwaysOn
                                                               : Qt::ScrollBarAlwaysOff);
  const QSizeF size = sheetSize();
  const auto arrangeBar = [this](QScrollBar& bar, double length, int view) {
    const int beyond = static_cast<int>(std::ceil(length)) + 2 * roundSheet - view;
    bar.setRange(0, scale.kind == Zoom::Kind::page || beyond <= 2 ? 0 : beyond);
    bar.setPageStep(view);
    bar.setSingleStep(lineOfScrolling);
  };
  arrangeBar(*horizontalScrollBar(), size.width(), viewport()->width());
  arrangeBar(*verticalScrollBar(), size.height(), viewport()->height());
  if (!grabbed) viewport()->setCursor(isScrollable() ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

bool PaperView::isScrollable() const {
  return horizontalScrollBar()->maximum() > 0 || verticalScrollBar()->maximum() > 0;
}

void PaperView::zoomBy(int steps, const QPointF& place) {
  double next = factor();
  if (next <= 0) return;
  for (int i = 0; i < std::abs(steps); ++i) next = nextFactor(next, steps > 0);
  zoomAround({Zoom::Kind::size, next}, place);
}

// The point of the page at that place stays there.
void PaperView::zoomAround(const Zoom& newZoom, const QPointF& place) {
  if (newZoom == scale) return;
  const QRectF before = sheet();
  const QPointF part((place.x() - before.left()) / before.width(), (place.y() - before.top()) / before.height());
  scale = newZoom;
  arrange();
  arrange();  // for the viewport that the bars have left
  const QSizeF size = sheetSize();
  horizontalScrollBar()->setValue(static_cast<int>(std::lround(part.x() * size.width() + roundSheet - place.x())));
  verticalScrollBar()->setValue(static_cast<int>(std::lround(part.y() * size.height() + roundSheet - place.y())));
  viewport()->update();
  Q_EMIT roomChanged();
  Q_EMIT zoomChanged();
}

bool PaperView::viewportEvent(QEvent* event) {
  // The tip of the view would hide the place in the page that the mouse is at.
  if (event->type() == QEvent::ToolTip && isScrollable()) return true;
  return QAbstractScrollArea::viewportEvent(event);
}

void PaperView::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  paintDesk(painter, *viewport());
  if (!shown.failure.isEmpty()) {
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(viewport()->rect().adjusted(roundSheet, roundSheet, -roundSheet, -roundSheet),
                     Qt::AlignCenter | Qt::TextWordWrap, shown.failure);
  } else if (!shown.image.isNull()) {
    paintPaper(painter);
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
  }
}

void PaperView::paintPaper(QPainter& painter) const {
  const QRectF place = sheet();
  paintSheet(painter, place);
  const bool isExact = (place.size() * devicePixelRatioF()).toSize() == shown.image.size();
  painter.setRenderHint(QPainter::SmoothPixmapTransform, !isExact);
  painter.drawImage(place, shown.image);
}

void PaperView::resizeEvent(QResizeEvent*) {
  arrange();
  if (scale.kind == Zoom::Kind::size) return;
  Q_EMIT roomChanged();
  Q_EMIT zoomChanged();
}

void PaperView::scrollContentsBy(int, int) { viewport()->update(); }

void PaperView::keyPressEvent(QKeyEvent* event) {
  if (scrollByKey(event->key())) return;
  switch (event->key()) {
    case Qt::Key_PageDown:
    case Qt::Key_Down: return Q_EMIT pagesWanted(1);
    case Qt::Key_PageUp:
    case Qt::Key_Up: return Q_EMIT pagesWanted(-1);
    case Qt::Key_Home: return Q_EMIT endWanted(false);
    case Qt::Key_End: return Q_EMIT endWanted(true);
    default: event->ignore();
  }
}

bool PaperView::scrollByKey(int key) {
  const bool isAcross = key == Qt::Key_Left || key == Qt::Key_Right;
  if (!isAcross && key != Qt::Key_Up && key != Qt::Key_Down) return false;
  QScrollBar& bar = isAcross ? *horizontalScrollBar() : *verticalScrollBar();
  if (bar.maximum() == 0) return false;
  const bool isBack = key == Qt::Key_Left || key == Qt::Key_Up;
  bar.triggerAction(isBack ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd);
  return true;
}

void PaperView::wheelEvent(QWheelEvent* event) {
  event->accept();
  const int delta = event->angleDelta().y();
  if ((event->modifiers() & Qt::ControlModifier) != 0) {
    wheel += delta;
    if (const int notches = wheel / notchOfWheel; notches != 0) {
      wheel -= notches * notchOfWheel;
      zoomBy(notches, event->position());
    }
    return;
  }
  const QScrollBar& bar = *verticalScrollBar();
  const bool isAtEnd = bar.value() == (delta < 0 ? bar.maximum() : bar.minimum());
  if (delta == 0 || !isAtEnd) return QAbstractScrollArea::wheelEvent(event);
  turnByWheel(delta);
}

void PaperView::turnByWheel(int delta) {
  wheel += delta;
  const int notches = wheel / notchOfWheel;
  if (notches == 0) return;
  wheel -= notches * notchOfWheel;
  verticalScrollBar()->setValue(notches < 0 ? 0 : verticalScrollBar()->maximum());
  Q_EMIT pagesWanted(-notches);
}

void PaperView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !isScrollable()) return event->ignore();
  grabbed = event->pos();
  viewport()->setCursor(Qt::ClosedHandCursor);
}

void PaperView::mouseMoveEvent(QMouseEvent* event) {
  if (!grabbed) return event->ignore();
  const QPoint way = event->pos() - *grabbed;
  grabbed = event->pos();
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() - way.x());
  verticalScrollBar()->setValue(verticalScrollBar()->value() - way.y());
}

void PaperView::mouseReleaseEvent(QMouseEvent*) {
  grabbed.reset();
  arrange();
}

void PaperView::focusInEvent(QFocusEvent*) { viewport()->update(); }

void PaperView::focusOutEvent(QFocusEvent*) { viewport()->update(); }

}  // namespace Window
