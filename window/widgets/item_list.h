// A list whose items may be dragged by their pictures.
#pragma once

#include <QListWidget>

class QMimeData;

namespace Window {

// The MIME format of a dragged item's value, and how to read it.
inline constexpr const char* itemFormat = "application/x-kiln-item";
QString valueIn(const QMimeData& data);

class ItemList final : public QListWidget {
  Q_OBJECT

 public:
  using QListWidget::QListWidget;

  // The role of an item's value, which is dragged.
  static constexpr int valueRole = Qt::UserRole;

  // Shows the items' pictures as pages that fit into a square with this side. The edge of a selected page has the
  // item's colour; items without pictures use it for their texts.
  void showPages(int side);
  bool showsPages() const { return hasPages; }

  // The height of a row, including padding.
  int rowHeight() const;

 Q_SIGNALS:
  // The user has clicked the current row, or pressed Space in it.
  void chosenAgain(int row);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void startDrag(Qt::DropActions actions) override;
  QStringList mimeTypes() const override { return {itemFormat}; }
  QMimeData* mimeData(const QList<QListWidgetItem*>& dragged) const override;

 private:
  void tellCurrent();

  bool hasPages = false;
  bool isPressedAgain = false;  // whether the mouse button went down on the current row
};

}  // namespace Window
