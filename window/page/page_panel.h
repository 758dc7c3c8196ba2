// The page as it will print, with controls to turn pages.
#pragma once

#include "window/language/texts.h"
#include "window/page/overlay_texts.h"
#include "window/page/page_artist.h"

#include <QWidget>

class QAction;
class QLabel;
class QToolButton;

namespace Window {

class PaperView;

class PagePanel final : public QWidget {
  Q_OBJECT

 public:
  explicit PagePanel(QWidget* parent);

  void setTexts(const Texts& texts);

  // Entries for a menu, with their texts. Checked, the first one shows the panel; a hidden panel draws nothing.
  QList<QAction*> viewActions() const { return actions(); }

  // The settings of the page shown.
  void setDocument(const Press::JobFile& file);
  void setEffects(const Press::Effects& newEffects);

  // Redraws from the files' current content.
  void redraw();

  int page() const { return order.page; }
  void goTo(int page);

  // Whether the picture shows the current document, page, effects and size.
  bool isSettled() const { return artist.isIdle(); }
  const PagePicture& picture() const;

 private:
  void turn(int sheets) { goTo(page() + sheets * order.effects.pagesOnSheet); }
  void drawn(const PagePicture& picture);
  void showPlace();
  void showOverlays();

  PageOrder order;
  QAction* shows;
  PaperView* paper;
  QToolButton* back;
  QToolButton* forward;
  QLabel* place;
  QLabel* size;
  QLabel* overlays;
  QLabel* notes;
  QString placeText;
  QString sheetText;
  QString sizeText;
  QString paperText;
  OverlayTexts overlayTexts;
  PageArtist artist;
};

}  // namespace Window
