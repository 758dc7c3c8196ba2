// The page as it will print, with controls to turn pages and to zoom, the other pages, and notes on the page.
#pragma once

#include "window/language/texts.h"
#include "window/page/overlay_texts.h"
#include "window/page/page_artist.h"

#include <QTimer>
#include <QWidget>

class QAction;
class QLabel;
class QScrollArea;

namespace Window {

class PageBar;
class PageStrip;
class PaperView;

class PagePanel final : public QWidget {
  Q_OBJECT

 public:
  explicit PagePanel(QWidget* parent);
  ~PagePanel() override;

  void setTexts(const Texts& texts);

  // Entries for a menu, with their texts.
  QList<QAction*> viewActions() const { return actions(); }

  // The one of them that shows the panel while it is checked. A hidden panel draws nothing.
  QAction* toggleViewAction() const { return shows; }

  // The settings of the page shown.
  void setDocument(const Press::JobFile& file);
  void setEffects(const Press::Effects& newEffects);

  // The paper that the user has chosen, in points, and its name; empty for none. Pages print in their own size.
  void setPaper(const QString& name, const QSizeF& points);

  // The shown page as a watermark is put on it: without effects, and with the others of its sheet where the watermark
  // is printed once for all; its size in points, empty while it is unknown.
  PageOrder plainPage() const;
  QSizeF plainSize() const;

  // Redraws from the files' current content.
  void redraw();

  int page() const { return order.page; }
  void goTo(int page);

  // Whether the picture shows the current document, page, effects and size.
  bool isSettled() const { return artist.isIdle(); }
  const PagePicture& picture() const;

  // Whether the notes also tell what is found by a closer look, a moment later.
  bool isExamined() const { return isSettled() && !moment.isActive() && !isExamining; }

  // Whether the pages beside the picture are drawn too.
  bool isComplete() const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void build();
  void buildActions();
  void turn(int sheets) { goTo(page() + sheets * order.effects.pagesOnSheet); }
  void drawn(const PagePicture& picture);
  void examine();
  void showPlace();
  void showStrip();
  void showNotes();
  void showOverlays();
  void showRoomOfNotes();
  QString paperNote() const;

  PageOrder order;
  PageArtist artist;
  QAction* shows;
  QAction* showsStrip;
  PaperView* paper;
  PageStrip* strip;
  PageBar* bar;
  QLabel* size;
  QScrollArea* notesRoom;
  QWidget* noted;
  QLabel* overlays;
  QLabel* notes;
  QTimer moment;  // until the page is examined
  bool isExamining = false;
  HiddenMarks hidden;
  QString chosenPaper;
  QSizeF chosenSize;
  QString sizeText;
  QString paperText;
  QString otherPaperText;
  QString watermarkHiddenText;
  QString overlaysHiddenText;
  OverlayTexts overlayTexts;
};

}  // namespace Window
