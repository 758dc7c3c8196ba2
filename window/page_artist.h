// Draws pages as they will print, on a thread of its own, so that a click never waits for a picture.
#pragma once

#include "press/effects.h"

#include <QImage>
#include <QObject>
#include <QSize>
#include <QSizeF>
#include <QString>
#include <QThread>

#include <atomic>
#include <filesystem>
#include <memory>

namespace Window {

// What to draw.
struct PageOrder {
  std::filesystem::path document;
  Press::Effects effects;
  int page = 1;

  // The pixels that the picture must fit into.
  QSize room;
};

struct PagePicture {
  QImage image;
  int pages = 0;
  int pagesOnSheet = 1;

  // The page's size as it is seen; with several on a sheet, the sheet's.
  QSizeF millimetres;

  // What is printed otherwise than asked, as sentences; mostly empty.
  QString notes;

  // Why there is no picture, as one sentence; empty when there is one.
  QString failure;
};

class PageArtist final : public QObject {
  Q_OBJECT

 public:
  PageArtist();
  ~PageArtist() override;

  // Draws soon. Of several orders given while one is being drawn only the last is carried out.
  void draw(const PageOrder& order);

  // Whether the picture of the last order has been told.
  bool isIdle() const { return told == latest.load(); }

 Q_SIGNALS:
  // The picture of the last order.
  void drawn(const Window::PagePicture& picture);

 private:
  class Desk;

  QThread thread;
  std::unique_ptr<Desk> desk;
  std::atomic<int> latest = 0;
  int told = 0;
};

}  // namespace Window
