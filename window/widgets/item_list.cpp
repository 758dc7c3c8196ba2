#include "window/widgets/item_list.h"

#include <QDrag>
#include <QMimeData>

#include <algorithm>

namespace Window {
namespace {

constexpr int aboveAndBelow = 4;

}  // namespace

// Raw UTF-16 units, since a value may have unpaired surrogates.
QString valueIn(const QMimeData& data) {
  const QByteArray bytes = data.data(itemFormat);
  return QString(reinterpret_cast<const QChar*>(bytes.constData()), bytes.size() / qsizetype(sizeof(QChar)));
}

void ItemList::showPages(int side) {
  hasPages = true;
  setIconSize({side, side});
}

int ItemList::rowHeight() const { return std::max(fontMetrics().height(), iconSize().height()) + aboveAndBelow; }

QMimeData* ItemList::mimeData(const QList<QListWidgetItem*>& dragged) const {
  auto* data = new QMimeData;
  const QString value = dragged.isEmpty() ? QString() : dragged.first()->data(valueRole).toString();
  data->setData(itemFormat,
                QByteArray(reinterpret_cast<const char*>(value.constData()), value.size() * qsizetype(sizeof(QChar))));
  return data;
}

void ItemList::startDrag(Qt::DropActions) {
  if (currentItem() == nullptr) return;
  auto* drag = new QDrag(this);
  drag->setMimeData(mimeData({currentItem()}));
  const QIcon icon = currentItem()->icon();
  drag->setPixmap(icon.isNull() ? viewport()->grab(visualItemRect(currentItem())) : icon.pixmap(iconSize() * 2));
  drag->exec(Qt::CopyAction);
}

}  // namespace Window
