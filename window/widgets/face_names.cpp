#include "window/widgets/face_names.h"

#include <QComboBox>
#include <QListView>

#include <algorithm>

namespace Window {
namespace {

bool canWrite(QFont font, const QString& text) {
  font.setStyleStrategy(QFont::NoFontMerging);
  const QFontMetrics metrics(font);
  return std::all_of(text.begin(), text.end(), [&](QChar unit) { return unit.isSurrogate() || metrics.inFont(unit); });
}

}  // namespace

QSize FaceNames::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return {0, QFontMetrics(option.font).height() * 3 / 2};
}

void FaceNames::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  QFont own = option->font;
  own.setFamilies({option->text});
  if (canWrite(own, option->text)) option->font = own;
}

void showInOwnFaces(QComboBox& combo) {
  combo.setItemDelegate(new FaceNames(&combo));
  auto* view = qobject_cast<QListView*>(combo.view());
  if (view != nullptr) view->setUniformItemSizes(true);
  // Measuring all names would load all faces.
  combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  combo.setMinimumContentsLength(16);
}

}  // namespace Window
