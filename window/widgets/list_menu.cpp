#include "window/widgets/list_menu.h"

#include <QAction>
#include <QMenu>
#include <QShortcut>

#include <utility>
#include <vector>

namespace Window {
namespace {

class ListMenu final : public QObject {
 public:
  explicit ListMenu(QWidget& owner) : QObject(&owner), list(owner) {
    setObjectName("listMenu");
    list.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&list, &QWidget::customContextMenuRequested, this, &ListMenu::open);
  }

  void add(ListMenuEntry entry) {
    auto* keys = new QShortcut(entry.keys, &list);
    keys->setContext(Qt::WidgetShortcut);
    connect(keys, &QShortcut::activated, this, [entry] {
      if (entry.isOffered()) entry.act();
    });
    entries.push_back(std::move(entry));
  }

 private:
  void open(const QPoint& place) {
    auto* menu = new QMenu(&list);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const ListMenuEntry& entry : entries) {
      QAction* action = menu->addAction(entry.label);
      action->setShortcut(entry.keys);
      action->setShortcutVisibleInContextMenu(true);
      action->setEnabled(entry.isOffered());
      // Queued: the menu closes first.
      connect(action, &QAction::triggered, this, entry.act, Qt::QueuedConnection);
    }
    menu->popup(list.mapToGlobal(place));
  }

  QWidget& list;
  std::vector<ListMenuEntry> entries;
};

}  // namespace

void addToMenu(QWidget& list, ListMenuEntry entry) {
  QObject* known = list.findChild<QObject*>("listMenu", Qt::FindDirectChildrenOnly);
  auto* menu = dynamic_cast<ListMenu*>(known);
  if (menu == nullptr) menu = new ListMenu(list);
  menu->add(std::move(entry));
}

}  // namespace Window
