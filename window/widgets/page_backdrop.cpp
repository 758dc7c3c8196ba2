#include "window/widgets/page_backdrop.h"

#include "window/page/paper.h"

#include <QPainter>

namespace Window {
namespace {

// How much of the paper's white lies over the page, so that the watermark stands out.
constexpr double whiteOverPage = 0.4;

}  // namespace

PageBackdrop::PageBackdrop(const PageOrder& pageOrder, QObject* parent) : QObject(parent), order(pageOrder) {
  connect(&artist, &PageArtist::drawn, this, &PageBackdrop::take);
}

void PageBackdrop::fit(const QSize& room) {
  if (room == order.room) return;
  order.room = room;
  artist.draw(order);
}

void PageBackdrop::take(const PagePicture& picture) {
  dimmed = picture.image;
  if (!dimmed.isNull()) {
    size = picture.millimetres * pointsPerMillimetre;
    QPainter painter(&dimmed);
    painter.setOpacity(whiteOverPage);
    painter.fillRect(dimmed.rect(), Qt::white);
  }
  Q_EMIT changed();
}

}  // namespace Window
