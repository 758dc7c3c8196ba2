// The page as it will print, with controls to turn pages.
#pragma once

#include "window/page_artist.h"
#include "window/texts.h"

#include <QWidget>

class QLabel;
class QToolButton;

namespace Window {

// A sheet of paper, scaled to fit.
class PaperView final : public QWidget {
  Q_OBJECT

 public:
  explicit PaperView(QWidget* parent);

  // The size available for a page, in device pixels.
  QSize room() const;
  void show(const PagePicture& newPicture);
  const PagePicture& picture() const { return shown; }

  QSize sizeHint() const override;

 Q_SIGNALS:
  void roomChanged();
  void pagesWanted(int forward);
  void endWanted(bool last);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void paintPaper(QPainter& painter) const;

  PagePicture shown;
  int wheel = 0;
};

class PagePanel final : public QWidget {
  Q_OBJECT

 public:
  explicit PagePanel(QWidget* parent);

  void setTexts(const Texts& texts);

  // The settings of the page shown.
  void setDocument(const std::filesystem::path& file);
  void setEffects(const Press::Effects& newEffects);

  // Redraws from the files' current content.
  void redraw();

  int page() const { return order.page; }
  void goTo(int page);

  // Whether the picture shows the current document, page, effects and size.
  bool isSettled() const { return artist.isIdle(); }
  const PagePicture& picture() const { return paper->picture(); }

 private:
  void turn(int sheets) { goTo(page() + sheets * order.effects.pagesOnSheet); }
  void drawn(const PagePicture& picture);
  void showPlace();

  PageOrder order;
  PaperView* paper;
  QToolButton* back;
  QToolButton* forward;
  QLabel* place;
  QLabel* size;
  QLabel* notes;
  QString placeText;
  QString sheetText;
  QString sizeText;
  QString paperText;
  PageArtist artist;
};

}  // namespace Window
