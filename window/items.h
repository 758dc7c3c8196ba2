// The items of a list box or a combo box, shown in Qt's.
#pragma once

#include "kiln/widgets.h"

#include <QListWidget>
#include <QStyledItemDelegate>

class QComboBox;
class QMimeData;

namespace Window {

// The MIME format of a dragged item's value, and how to read it.
inline constexpr const char* itemFormat = "application/x-kiln-item";
QString valueIn(const QMimeData& data);

// A list whose items may be dragged by their pictures.
class ItemList final : public QListWidget {
  Q_OBJECT

 public:
  using QListWidget::QListWidget;

  // Shows the items' pictures as pages that fit into a square with this side. The edge of a selected page has the
  // item's colour; items without pictures use it for their texts.
  void showPages(int side);
  bool showsPages() const { return hasPages; }

  // The height of a row, including padding.
  int rowHeight() const;

 protected:
  void startDrag(Qt::DropActions actions) override;
  QStringList mimeTypes() const override { return {itemFormat}; }
  QMimeData* mimeData(const QList<QListWidgetItem*>& dragged) const override;

 private:
  bool hasPages = false;
};

// Shows font names in their own faces. Faces are loaded when their names become visible, so that long lists open fast;
// a face that lacks the characters of its name is shown in the list's font.
class FaceNames final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

// Makes a combo box of font names show them in their faces.
void showInOwnFaces(QComboBox& combo);

// Replaces the items shown, with text, colour and picture. Selects none.
void showItems(ItemList& list, Kiln::XUL::ListData& items);
void showItems(QComboBox& combo, Kiln::XUL::ListData& items);

}  // namespace Window
