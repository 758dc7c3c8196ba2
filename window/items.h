// The items of a list box or a combo box, shown in Qt's.
#pragma once

#include "kiln/widgets.h"

#include <QListWidget>
#include <QStyledItemDelegate>

class QComboBox;
class QMimeData;

namespace Window {

// What carries an item's value while it is dragged, and how it is read there.
inline constexpr const char* itemFormat = "application/x-kiln-item";
QString valueIn(const QMimeData& data);

// A list whose items may be dragged, by their pictures.
class ItemList final : public QListWidget {
  Q_OBJECT

 public:
  using QListWidget::QListWidget;

  // Shows an item's picture as a page, as large as fits into a square of this side. A page has an edge, which is in the
  // item's colour while it is selected; items without such pictures have their texts in it.
  void showPages(int side);
  bool showsPages() const { return hasPages; }

  // The height of a row, with room above and below text and picture.
  int rowHeight() const;

 protected:
  void startDrag(Qt::DropActions actions) override;
  QStringList mimeTypes() const override { return {itemFormat}; }
  QMimeData* mimeData(const QList<QListWidgetItem*>& dragged) const override;

 private:
  bool hasPages = false;
};

// Shows the names of faces each in its own face. A face is asked for when its name comes into sight, so that a thousand
// of them open as fast as ten; one that cannot write its name is named in the list's own.
class FaceNames final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

// Has a combo box of face names show them so.
void showInOwnFaces(QComboBox& combo);

// Replaces what is shown by these items: text, colour, picture. Leaves none selected.
void showItems(ItemList& list, Kiln::XUL::ListData& items);
void showItems(QComboBox& combo, Kiln::XUL::ListData& items);

}  // namespace Window
