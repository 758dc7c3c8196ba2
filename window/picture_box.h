// A picture, as large as its room lets it be, on which entries of lists may be dropped and which may have a menu.
#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>

#include <vector>

class QMenu;

namespace Window {

class PictureBox final : public QWidget {
  Q_OBJECT

 public:
  struct Entry {
    QString text;   // what `chosen` tells
    QString label;  // what the user reads
  };

  explicit PictureBox(QWidget* parent);

  // A page has an edge.
  void show(const QPixmap& picture, bool isPage = false);
  const QPixmap& picture() const { return shown; }

  // A box that takes drops, or has a menu, also takes the focus.
  void takeDrops();
  void setMenu(std::vector<Entry> menuEntries);

  QSize sizeHint() const override;

 Q_SIGNALS:
  // Once the drop is over, so that what follows may open a dialog.
  void dropped(const QString& value);
  void chosen(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void openMenu(const QPoint& place);
  void setUnderDrag(bool isUnder);

  QPixmap shown;
  bool hasEdge = false;
  std::vector<Entry> entries;
  bool isUnderDrag = false;
};

}  // namespace Window
