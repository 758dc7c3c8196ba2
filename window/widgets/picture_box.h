// A scaled picture that can accept drops of list entries and have a context menu.
#pragma once

#include <QKeySequence>
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
    QString text;   // the value sent by `chosen`
    QString label;  // the displayed label

    // Keys that choose it while the box has the focus; empty for none.
    QKeySequence keys = {};
  };

  explicit PictureBox(QWidget* parent);

  // Pages are shown with an edge.
  void show(const QPixmap& picture, bool isPage = false);
  const QPixmap& picture() const { return shown; }

  // A box with drops or a menu also accepts the focus.
  void takeDrops();
  void setMenu(std::vector<Entry> menuEntries);

  QSize sizeHint() const override;

 Q_SIGNALS:
  // Emitted after the drop has finished, so that handlers may open a dialog.
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
