// The page that a watermark is for, dimmed, to be shown under the watermark.
#pragma once

#include "window/page/page_artist.h"

#include <QImage>
#include <QSizeF>

namespace Window {

class PageBackdrop final : public QObject {
  Q_OBJECT

 public:
  PageBackdrop(const PageOrder& pageOrder, QObject* parent);

  // Asks for a picture that fits the room, in device pixels.
  void fit(const QSize& room);

  // Null until there is a picture, and for a page that cannot be drawn.
  const QImage& image() const { return dimmed; }

  // The size of the displayed page; empty while it is unknown.
  const QSizeF& points() const { return size; }

  // Whether what was asked for is there.
  bool isSettled() const { return artist.isIdle(); }

 Q_SIGNALS:
  void changed();

 private:
  void take(const PagePicture& picture);

  PageOrder order;
  QImage dimmed;
  QSizeF size;
  PageArtist artist;
};

}  // namespace Window
