#include "window/page/paper_view.h"

#include "window/page/paper.h"

#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>

namespace Window {
namespace {

constexpr int notchOfWheel = 120;

}  // namespace

PaperView::PaperView(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(260, 260);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize PaperView::sizeHint() const { return {430, 560}; }

QSize PaperView::room() const {
  return ((QSizeF(size()) - QSizeF(2 * roundSheet, 2 * roundSheet)) * devicePixelRatioF()).toSize().expandedTo({1, 1});
}

void PaperView::show(const PagePicture& newPicture) {
  shown = newPicture;
  update();
}

void PaperView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintDesk(painter, *this);
  if (!shown.failure.isEmpty()) {
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(roundSheet, roundSheet, -roundSheet, -roundSheet),
                     Qt::AlignCenter | Qt::TextWordWrap, shown.failure);
  } else if (!shown.image.isNull()) {
    paintPaper(painter);
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

// A picture of the current size is drawn pixel by pixel; an outdated one is scaled until the next arrives.
void PaperView::paintPaper(QPainter& painter) const {
  const double ratio = devicePixelRatioF();
  const QSize pixels = shown.image.size().scaled(room(), Qt::KeepAspectRatio);
  const QSize nearly = (shown.image.size() - pixels).expandedTo(pixels - shown.image.size());
  const bool fits = nearly.width() <= 2 && nearly.height() <= 2;
  QRectF sheet = sheetWithin(*this, shown.image.size());
  if (fits) sheet.setSize(QSizeF(shown.image.size()) / ratio);
  paintSheet(painter, sheet);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, !fits);
  painter.drawImage(sheet, shown.image);
}

void PaperView::resizeEvent(QResizeEvent*) { Q_EMIT roomChanged(); }

void PaperView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_PageDown:
    case Qt::Key_Down: return Q_EMIT pagesWanted(1);
    case Qt::Key_PageUp:
    case Qt::Key_Up: return Q_EMIT pagesWanted(-1);
    case Qt::Key_Home: return Q_EMIT endWanted(false);
    case Qt::Key_End: return Q_EMIT endWanted(true);
    default: QWidget::keyPressEvent(event);
  }
}

void PaperView::wheelEvent(QWheelEvent* event) {
  wheel += event->angleDelta().y();
  if (const int notches = wheel / notchOfWheel; notches != 0) {
    wheel -= notches * notchOfWheel;
    Q_EMIT pagesWanted(-notches);
  }
}

}  // namespace Window
