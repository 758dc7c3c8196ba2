#include "window/widgets/list_input.h"

#include "host/chrome/layout.h"
#include "host/widgets/input.h"
#include "window/widgets/list_buttons.h"

#include <QAbstractScrollArea>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QShortcut>

#include <stdexcept>
#include <utility>
#include <vector>

namespace Window {
namespace {

constexpr const char* nameOfInput = "listInput";

// Belongs to the widget that shows the list.
class ListInput final : public QObject {
 public:
  ListInput(const Refhost::WidgetNode& listNode, const ListButtons& listButtons, ShownTree& shownTree, QWidget& shownBy)
      : QObject(&shownBy),
        list(listNode),
        buttons(listButtons),
        tree(shownTree),
        widget(shownBy) {
    setObjectName(nameOfInput);
    widget.installEventFilter(this);
    if (auto* area = qobject_cast<QAbstractScrollArea*>(&widget)) area->viewport()->installEventFilter(this);
  }

  void add(ListEntry entry) {
    if (!entry.keys.isEmpty()) {
      auto* keys = new QShortcut(entry.keys, &widget);
      keys->setContext(Qt::WidgetShortcut);
      connect(keys, &QShortcut::activated, this, [entry] {
        if (entry.isOffered()) entry.act();
      });
    }
    entries.push_back(std::move(entry));
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    switch (event->type()) {
      case QEvent::KeyPress: return pressKey(*static_cast<QKeyEvent*>(event));
      case QEvent::ContextMenu: return openMenu(*static_cast<QContextMenuEvent*>(event));
      case QEvent::MouseButtonDblClick: openEntry(*static_cast<QMouseEvent*>(event)); return false;
      default: return false;
    }
  }

 private:
  // Null when the tab has no such button.
  Refhost::Button* button(Formats::Name id) const {
    Refhost::Button* found = nullptr;
    if (id.empty() || !tree.contains(list)) return found;
    Refhost::walk(tree.root(), [&](Refhost::WidgetNode& node) {
      if (node.id() == id) found = dynamic_cast<Refhost::Button*>(&node);
    });
    return found;
  }

  // Queued, so that the entry that was clicked is chosen first. A disabled button is not pressed.
  void press(Formats::Name id) {
    QMetaObject::invokeMethod(
        this,
        [this, id] {
          if (Refhost::Button* pressed = button(id)) tree.actions().click(*pressed);
        },
        Qt::QueuedConnection);
  }

  bool pressKey(const QKeyEvent& event) {
    if (event.key() != Qt::Key_Delete || event.modifiers() != Qt::NoModifier || button(buttons.remove) == nullptr)
      return false;
    press(buttons.remove);
    return true;
  }

  void openEntry(const QMouseEvent& event) {
    const auto* rows = qobject_cast<QListWidget*>(&widget);
    const bool isOnEntry = rows != nullptr && rows->itemAt(event.position().toPoint()) != nullptr;
    if (event.button() == Qt::LeftButton && isOnEntry) press(buttons.edit);
  }

  // By the keyboard, the menu opens at the selected entry.
  QPoint placeOf(const QContextMenuEvent& event) const {
    if (event.reason() != QContextMenuEvent::Keyboard) return event.globalPos();
    auto* rows = qobject_cast<QListWidget*>(&widget);
    const bool hasEntry = rows != nullptr && rows->currentItem() != nullptr;
    return hasEntry ? rows->viewport()->mapToGlobal(rows->visualItemRect(rows->currentItem()).center())
                    : widget.mapToGlobal(widget.rect().center());
  }

  // Queued for the same reason: what is enabled depends on the entry.
  bool openMenu(const QContextMenuEvent& event) {
    QMetaObject::invokeMethod(this, [this, place = placeOf(event)] { showMenu(place); }, Qt::QueuedConnection);
    return true;
  }

  void showMenu(const QPoint& place) {
    auto* menu = new QMenu(&widget);
    menu->setObjectName("list_menu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const ListEntry& each : entries) {
      QAction* entry = menu->addAction(each.label);
      entry->setShortcut(each.keys);
      entry->setShortcutVisibleInContextMenu(true);
      entry->setEnabled(each.isOffered());
      // Queued: the menu closes first.
      connect(entry, &QAction::triggered, this, each.act, Qt::QueuedConnection);
    }
    for (const Formats::Name id : {buttons.add, buttons.edit, buttons.remove}) {
      const Refhost::Button* known = button(id);
      if (known == nullptr || !known->WidgetNode::isVisible()) continue;
      QAction* entry = menu->addAction(tree.label(*known));
      entry->setObjectName(toQt(id));
      entry->setEnabled(known->isOperable());
      connect(entry, &QAction::triggered, this, [this, id] { press(id); });
    }
    if (menu->isEmpty()) return menu->deleteLater();
    menu->popup(place);
  }

  const Refhost::WidgetNode& list;
  const ListButtons& buttons;
  ShownTree& tree;
  QWidget& widget;
  std::vector<ListEntry> entries;
};

}  // namespace

void pressButtonsFrom(const Refhost::WidgetNode& node, ShownTree& tree, QWidget& widget) {
  if (const ListButtons* buttons = buttonsOfList(node.id())) new ListInput(node, *buttons, tree, widget);
}

void addToMenu(QWidget& list, ListEntry entry) {
  auto* input = dynamic_cast<ListInput*>(list.findChild<QObject*>(nameOfInput, Qt::FindDirectChildrenOnly));
  if (input == nullptr) throw std::logic_error("No buttons belong to this list.");
  input->add(std::move(entry));
}

}  // namespace Window
