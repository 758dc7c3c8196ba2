// The controls below the page: which page is shown, and how large.
#pragma once

#include "window/language/texts.h"
#include "window/page/zoom.h"

#include <QList>
#include <QWidget>

class QAction;
class QToolButton;

namespace Window {

class PageNumber;

class PageBar final : public QWidget {
  Q_OBJECT

 public:
  explicit PageBar(QWidget* parent);

  void setTexts(const Texts& texts);

  // With `isSheet`, what is counted are sheets; the count is 0 while nothing is shown.
  void showPlace(int number, int count, bool isSheet);

  // The factor is 0 while nothing is shown.
  void showZoom(const Zoom& zoom, double factor);

  // "Page 3 of 10", or nothing.
  QString place() const;

  // Entries for a menu that zoom.
  const QList<QAction*>& zoomActions() const { return zooms; }

 Q_SIGNALS:
  void turned(int forward);
  void endWanted(bool last);
  void numberEntered(int number);
  void zoomWanted(const Window::Zoom& zoom);
  void zoomStepped(int steps);

 private:
  QToolButton* addButton(const char* name, const QString& symbol);
  void buildZooms();

  QToolButton* first;
  QToolButton* back;
  PageNumber* number;
  QToolButton* forward;
  QToolButton* last;
  QToolButton* smaller;
  QToolButton* sizes;
  QToolButton* larger;
  QAction* zoomIn;
  QAction* zoomOut;
  QAction* trueSize;
  QAction* wholePage;
  QAction* pageWidth;
  QList<QAction*> zooms;
  QString placeText;
  QString sheetText;
  QString sizeText;
  bool isShown = false;
};

}  // namespace Window
