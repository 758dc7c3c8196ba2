#include "window/page/page_strip.h"

#include "window/page/paper.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <chrono>

namespace Window {
namespace {

constexpr QSize roomOfPicture(72, 96);
constexpr int besidePicture = 8;

// Pictures beyond the edges that are kept for scrolling back.
constexpr int keptBeyond = 24;

// Long enough that the pictures are not drawn between clicks that follow each other.
constexpr auto untilDrawn = std::chrono::milliseconds(200);

}  // namespace

PageStrip::PageStrip(PageArtist& pageArtist, QWidget* parent) : QAbstractScrollArea(parent), artist(pageArtist) {
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  moment.setSingleShot(true);
  moment.setInterval(untilDrawn);
  connect(&moment, &QTimer::timeout, this, &PageStrip::drawNext);
  connect(&artist, &PageArtist::drawnSmall, this, &PageStrip::take);
}

QSize PageStrip::sizeHint() const {
  return {roomOfPicture.width() + 2 * besidePicture + verticalScrollBar()->sizeHint().width(), 3 * cellHeight()};
}

int PageStrip::cellHeight() const { return roomOfPicture.height() + fontMetrics().height() + 2 * besidePicture; }

void PageStrip::show(const PageOrder& newOrder, const PagePicture& picture) {
  const bool isAnother = picture.edition != edition || newOrder.effects.pagesOnSheet != order.effects.pagesOnSheet;
  const bool hasMoved = newOrder.page != order.page;
  if (isAnother) pictures.clear();
  if (isAnother || newOrder.effects != order.effects) ++version;
  edition = picture.edition;
  order = newOrder;
  sheets = (picture.pages + order.effects.pagesOnSheet - 1) / order.effects.pagesOnSheet;
  arrange();
  if (isAnother || hasMoved) showCurrent();
  wait();
}

void PageStrip::showCurrent() {
  const QRect place = cell(current());
  QScrollBar& bar = *verticalScrollBar();
  if (place.top() < 0) bar.setValue(bar.value() + place.top());
  if (place.bottom() >= viewport()->height()) bar.setValue(bar.value() + place.bottom() + 1 - viewport()->height());
  viewport()->update();
}

void PageStrip::wait() { moment.start(); }

void PageStrip::arrange() {
  verticalScrollBar()->setRange(0, std::max(0, sheets * cellHeight() - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(cellHeight() / 2);
}

QRect PageStrip::cell(int sheet) const {
  return {0, (sheet - 1) * cellHeight() - verticalScrollBar()->value(), viewport()->width(), cellHeight()};
}

int PageStrip::firstInSight() const { return verticalScrollBar()->value() / cellHeight() + 1; }

int PageStrip::lastInSight() const {
  return std::min(sheets, (verticalScrollBar()->value() + viewport()->height() - 1) / cellHeight() + 1);
}

// The first sheet in sight without a present picture; 0 for none.
int PageStrip::missing() const {
  for (int sheet = firstInSight(); sheet <= lastInSight(); ++sheet) {
    const auto known = pictures.find(sheet);
    if (known == pictures.end() || known->second.version != version) return sheet;
  }
  return 0;
}

void PageStrip::drawNext() {
  if (isDrawing || moment.isActive() || !isVisible()) return;
  const int sheet = missing();
  if (sheet == 0) return;
  PageOrder small = order;
  small.page = (sheet - 1) * order.effects.pagesOnSheet + 1;
  small.room = roomOfPicture * devicePixelRatioF();
  small.resolution = 0;
  isDrawing = true;
  artist.drawSmall(small, version);
}

void PageStrip::take(int page, const QImage& image, int label) {
  isDrawing = false;
  if (label == version) {
    const int sheet = (page - 1) / order.effects.pagesOnSheet + 1;
    pictures[sheet] = {image, version};
    forgetFarOnes();
    viewport()->update(cell(sheet));
  }
  drawNext();
}

void PageStrip::forgetFarOnes() {
  pictures.erase(pictures.begin(), pictures.lower_bound(firstInSight() - keptBeyond));
  pictures.erase(pictures.upper_bound(lastInSight() + keptBeyond), pictures.end());
}

void PageStrip::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  paintDesk(painter, *viewport());
  for (int sheet = firstInSight(); sheet <= lastInSight(); ++sheet)
    if (cell(sheet).intersects(event->rect())) paintCell(painter, sheet);
}

void PageStrip::paintCell(QPainter& painter, int sheet) const {
  const QRect place = cell(sheet);
  const QRect room(place.left() + besidePicture, place.top() + besidePicture, place.width() - 2 * besidePicture,
                   roomOfPicture.height());
  const bool isCurrent = sheet == current();
  QRectF picture(room);
  if (const auto known = pictures.find(sheet); known != pictures.end() && !known->second.image.isNull()) {
    const QSizeF size = QSizeF(known->second.image.size()) / devicePixelRatioF();
    picture =
        QRectF(QPointF(qRound(room.center().x() - size.width() / 2), qRound(room.bottom() - size.height())), size);
    painter.drawImage(picture, known->second.image);
    painter.setPen(QPen(QColor(0, 0, 0, 70), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(picture);
  }
  if (isCurrent) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), hasFocus() ? 4 : 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(picture.adjusted(-2, -2, 2, 2));
  }
  QFont font = this->font();
  font.setBold(isCurrent);
  painter.setFont(font);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(QRect(place.left(), room.bottom() + 3, place.width(), fontMetrics().height()), Qt::AlignCenter,
                   QString::number(sheet));
}

void PageStrip::resizeEvent(QResizeEvent*) {
  arrange();
  wait();
}

void PageStrip::scrollContentsBy(int, int) {
  viewport()->update();
  wait();
}

void PageStrip::mousePressEvent(QMouseEvent* event) {
  const int sheet = (event->pos().y() + verticalScrollBar()->value()) / cellHeight() + 1;
  if (event->button() == Qt::LeftButton && sheet <= sheets)
    Q_EMIT pageWanted((sheet - 1) * order.effects.pagesOnSheet + 1);
}

void PageStrip::keyPressEvent(QKeyEvent* event) {
  const int inSight = std::max(1, viewport()->height() / cellHeight());
  int wanted = current();
  switch (event->key()) {
    case Qt::Key_Up: wanted -= 1; break;
    case Qt::Key_Down: wanted += 1; break;
    case Qt::Key_PageUp: wanted -= inSight; break;
    case Qt::Key_PageDown: wanted += inSight; break;
    case Qt::Key_Home: wanted = 1; break;
    case Qt::Key_End: wanted = sheets; break;
    default: return event->ignore();
  }
  Q_EMIT pageWanted((std::clamp(wanted, 1, std::max(1, sheets)) - 1) * order.effects.pagesOnSheet + 1);
}

void PageStrip::focusInEvent(QFocusEvent*) { viewport()->update(); }

void PageStrip::focusOutEvent(QFocusEvent*) { viewport()->update(); }

void PageStrip::showEvent(QShowEvent*) { wait(); }

}  // namespace Window
