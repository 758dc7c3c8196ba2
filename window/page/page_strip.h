// The job's pages, or sheets, as small pictures under each other. They are drawn in the background, and only while they
// are in sight.
#pragma once

#include "window/page/page_artist.h"

#include <QAbstractScrollArea>
#include <QTimer>

#include <map>

namespace Window {

class PageStrip final : public QAbstractScrollArea {
  Q_OBJECT

 public:
  // The artist outlives the strip.
  PageStrip(PageArtist& pageArtist, QWidget* parent);

  // Shows the pages of the picture's document as this order has them. Draws them when nothing has been shown for a
  // moment.
  void show(const PageOrder& newOrder, const PagePicture& picture);

  // Puts off drawing: a picture that does not wait is drawn.
  void wait();

  int count() const { return sheets; }

  // Whether the pictures of all pages in sight show their present content.
  bool isComplete() const { return missing() == 0; }

  // The number of pictures kept.
  int kept() const { return static_cast<int>(pictures.size()); }

  QSize sizeHint() const override;

 Q_SIGNALS:
  void pageWanted(int page);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  struct Small {
    QImage image;
    int version = 0;  // of the content that it shows
  };

  int cellHeight() const;
  QRect cell(int sheet) const;
  int firstInSight() const;
  int lastInSight() const;
  int current() const { return (order.page - 1) / order.effects.pagesOnSheet + 1; }
  int missing() const;
  void arrange();
  void showCurrent();
  void drawNext();
  void take(int page, const QImage& image, int label);
  void forgetFarOnes();
  void paintCell(QPainter& painter, int sheet) const;

  PageArtist& artist;
  PageOrder order;
  int sheets = 0;
  int version = 1;
  int edition = 0;
  bool isDrawing = false;
  std::map<int, Small> pictures;  // by sheet, from 1
  QTimer moment;
};

}  // namespace Window
