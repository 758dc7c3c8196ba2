#include "window/widgets/picture_box.h"

#include "window/widgets/images.h"
#include "window/widgets/item_list.h"
#include "window/widgets/readers.h"

#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace Window {
PictureBox::PictureBox(QWidget* parent) : QWidget(parent) { setRole(*this, QAccessible::Graphic); }

void PictureBox::show(const QPixmap& picture, bool isPage) {
  if (picture.cacheKey() == shown.cacheKey() && isPage == hasEdge) return;
  shown = picture;
  hasEdge = isPage;
  updateGeometry();
  update();
}

void PictureBox::takeDrops() {
  setAcceptDrops(true);
  setFocusPolicy(Qt::StrongFocus);
}

void PictureBox::setMenu(std::vector<Entry> menuEntries) {
  entries = std::move(menuEntries);
  if (!entries.empty()) setFocusPolicy(Qt::StrongFocus);
}

// A size in the layout takes precedence over the picture's.
QSize PictureBox::sizeHint() const {
  const QSize own = shown.deviceIndependentSize().toSize();
  return {minimumWidth() > 0 ? minimumWidth() : own.width(), minimumHeight() > 0 ? minimumHeight() : own.height()};
}

void PictureBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (!shown.isNull()) {
    const QSizeF fitting = shown.deviceIndependentSize().scaled(size(), Qt::KeepAspectRatio);
    const QRectF place(QPointF((width() - fitting.width()) / 2, (height() - fitting.height()) / 2), fitting);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(isEnabled() ? 1 : 0.4);
    painter.drawPixmap(place, shown, shown.rect());
    if (hasEdge) {
      painter.setPen(QPen(pageEdge, 1));
      painter.drawRect(place.adjusted(0.5, 0.5, -0.5, -0.5));
    }
    painter.setOpacity(1);
  }
  const QColor highlight = palette().color(QPalette::Highlight);
  if (isUnderDrag) {
    QColor veil = highlight;
    veil.setAlpha(60);
    painter.fillRect(rect(), veil);
  }
  if (isUnderDrag || hasFocus()) {
    painter.setPen(QPen(highlight, 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

void PictureBox::keyPressEvent(QKeyEvent* event) {
  for (const Entry& entry : entries)
    if (!entry.keys.isEmpty() && entry.keys == QKeySequence(event->keyCombination())) {
      Q_EMIT chosen(QString(entry.text));  // a copy: the choice may replace the entries
      return;
    }
  const bool asksForMenu = event->key() == Qt::Key_Menu || event->key() == Qt::Key_Space ||
                           (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
  if (!asksForMenu || entries.empty()) return QWidget::keyPressEvent(event);
  openMenu(mapToGlobal(rect().center()));
}

void PictureBox::mousePressEvent(QMouseEvent*) {}  // takes the focus, without propagating

void PictureBox::contextMenuEvent(QContextMenuEvent* event) {
  if (entries.empty()) return event->ignore();
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  openMenu(byKey ? mapToGlobal(rect().center()) : event->globalPos());
}

void PictureBox::openMenu(const QPoint& place) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const Entry& entry : entries) {
    QAction* action = menu->addAction(entry.label);
    action->setShortcut(entry.keys);
    action->setShortcutVisibleInContextMenu(true);
    connect(action, &QAction::triggered, this, [this, text = entry.text] { Q_EMIT chosen(text); });
  }
  menu->popup(place);
}

void PictureBox::dragEnterEvent(QDragEnterEvent* event) {
  if (!event->mimeData()->hasFormat(itemFormat)) return;
  event->acceptProposedAction();
  setUnderDrag(true);
}

void PictureBox::dragLeaveEvent(QDragLeaveEvent*) { setUnderDrag(false); }

void PictureBox::dropEvent(QDropEvent* event) {
  setUnderDrag(false);
  if (!event->mimeData()->hasFormat(itemFormat)) return;
  event->acceptProposedAction();
  const QString value = valueIn(*event->mimeData());
  QMetaObject::invokeMethod(this, [this, value] { Q_EMIT dropped(value); }, Qt::QueuedConnection);
}

void PictureBox::setUnderDrag(bool isUnder) {
  isUnderDrag = isUnder;
  update();
}

}  // namespace Window
