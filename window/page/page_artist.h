// Draws pages as they will print, in a background thread, so that clicks never wait for a picture.
#pragma once

#include "press/job/effects.h"
#include "press/pdf/job_file.h"

#include <QImage>
#include <QObject>
#include <QSize>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <QThread>

#include <atomic>
#include <memory>
#include <vector>

namespace Window {

// A request for a picture.
struct PageOrder {
  Press::JobFile document;
  Press::Effects effects;
  int page = 1;

  // The size in pixels that the picture must fit into.
  QSize room;

  // Pixels per inch; 0 for those that fill the room.
  double resolution = 0;
};

// Which marks lie under the page, and are covered by it altogether.
struct HiddenMarks {
  bool watermark = false;
  bool overlays = false;
};

// What the page panel says about the job's overlays.
struct OverlaySummary {
  bool countsSheets = false;
  QString words;         // which overlays are printed on which pages; empty for none
  QStringList onNoPage;  // names of overlays that no page of the job gets
  std::vector<Press::OverlayTrouble> troubles;
  QStringList namesInTrouble;  // one for each trouble
};

struct PagePicture {
  QImage image;
  int edition = 0;  // counts the openings of files; another one may have other content
  int pages = 0;
  int pagesOnSheet = 1;

  // The size of the displayed page; with several per sheet, of the sheet.
  QSizeF millimetres;

  OverlaySummary overlays;

  // Sentences about deviations from the requested effects; usually empty.
  QString notes;

  // Why there is no picture, as one sentence; empty when there is one.
  QString failure;
};

class PageArtist final : public QObject {
  Q_OBJECT

 public:
  PageArtist();
  ~PageArtist() override;

  // Requests a picture. While one is being drawn, only the latest further request is kept.
  void draw(const PageOrder& order);

  // Requests a picture of a page for a place among others, with `label` to tell what it belongs to. Every request is
  // answered; they delay those above.
  void drawSmall(const PageOrder& order, int label);

  // Requests the marks that cannot be seen on the page of the latest `draw`. Not answered when another one follows.
  void examine(const PageOrder& order);

  // Whether the latest request's picture was delivered.
  bool isIdle() const { return told == latest.load(); }

 Q_SIGNALS:
  // The picture for the latest request.
  void drawn(const Window::PagePicture& picture);

  // Without a picture when the page cannot be drawn.
  void drawnSmall(int page, const QImage& image, int label);

  void examined(const Window::HiddenMarks& hidden);

 private:
  class Desk;

  QThread thread;
  std::unique_ptr<Desk> desk;
  std::atomic<int> latest = 0;
  int told = 0;
};

}  // namespace Window
