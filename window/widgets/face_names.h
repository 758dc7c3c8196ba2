// Font names in their own faces.
#pragma once

#include <QStyledItemDelegate>

class QComboBox;

namespace Window {

// Faces are loaded when their names become visible, so that long lists open fast; a face that lacks the characters of
// its name is shown in the list's font.
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

}  // namespace Window
