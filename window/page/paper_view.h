// A sheet of paper, scaled to fit, with keys and a wheel that turn pages.
#pragma once

#include "window/page/page_artist.h"

#include <QWidget>

namespace Window {

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

}  // namespace Window
