#include "window/widgets/item_list.h"

#include <QAccessible>
#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>

#include <algorithm>
#include <utility>

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

void ItemList::mousePressEvent(QMouseEvent* event) {
  isPressedAgain = currentRow() >= 0 && row(itemAt(event->position().toPoint())) == currentRow();
  QListWidget::mousePressEvent(event);
}

void ItemList::mouseReleaseEvent(QMouseEvent* event) {
  QListWidget::mouseReleaseEvent(event);
  const bool isOnCurrent = row(itemAt(event->position().toPoint())) == currentRow();
  if (std::exchange(isPressedAgain, false) && isOnCurrent && event->button() == Qt::LeftButton)
    Q_EMIT chosenAgain(currentRow());
}

void ItemList::keyPressEvent(QKeyEvent* event) {
  const int before = currentRow();
  QListWidget::keyPressEvent(event);
  if (event->key() == Qt::Key_Space && before >= 0 && before == currentRow()) Q_EMIT chosenAgain(before);
}

// The toolkit tells screen readers that the list has the focus, and afterwards nothing of its item.
void ItemList::focusInEvent(QFocusEvent* event) {
  QListWidget::focusInEvent(event);
  QMetaObject::invokeMethod(this, &ItemList::tellCurrent, Qt::QueuedConnection);
}

void ItemList::tellCurrent() {
  if (!QAccessible::isActive() || !hasFocus() || currentRow() < 0) return;
  QAccessibleEvent focused(this, QAccessible::Focus);
  focused.setChild(currentRow());
  QAccessible::updateAccessibility(&focused);
}

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
