#include "window/widgets/lists.h"

#include "host/widgets/list.h"
#include "host/widgets/preview.h"
#include "window/widgets/face_names.h"
#include "window/widgets/item_list.h"
#include "window/widgets/items.h"
#include "window/widgets/list_input.h"
#include "window/widgets/node_facts.h"
#include "window/widgets/readers.h"

#include <QComboBox>
#include <QSignalBlocker>

namespace Window {

QWidget* buildList(Refhost::WidgetNode& node, ShownTree& tree, QWidget* parent) {
  auto& selector = dynamic_cast<Refhost::ListBox&>(node);
  auto* list = new ItemList(parent);
  list->setDragEnabled(selector.isDragSource());
  if (const int side = number(node, "iconsize"); side > 0) list->showPages(side);
  const int rows = number(node, "rows", 4);
  list->setFixedHeight(rows * list->rowHeight() + 2 * list->frameWidth());
  if (number(node, "flex") > 0) list->setMaximumHeight(QWIDGETSIZE_MAX);

  // Queued until the list has handled the key or click, since the choice may refill the list.
  const auto choose = [&tree, &node, &selector](int row) {
    if (tree.contains(node)) tree.actions().choose(selector, row);
  };
  QObject::connect(list, &QListWidget::currentRowChanged, list, choose, Qt::QueuedConnection);
  QObject::connect(list, &ItemList::chosenAgain, list, choose, Qt::QueuedConnection);
  tree.add(node, list, [&selector, list] {
    const QSignalBlocker quiet(list);
    showItems(*list, selector.items());
    list->setCurrentRow(selector.selection());
  });
  pressButtonsFrom(node, tree, *list);
  return list;
}

QWidget* buildCombo(Refhost::WidgetNode& node, ShownTree& tree, QWidget* parent) {
  auto& selector = dynamic_cast<Refhost::SelectorNode&>(node);
  auto* combo = new QComboBox(parent);
  combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  if (node.attribute("fontpreview") == u"true") showInOwnFaces(*combo);
  QObject::connect(combo, &QComboBox::activated, combo, [&tree, &selector, combo](int row) {
    tree.actions().choose(selector, row);
    const QSignalBlocker quiet(combo);
    combo->setCurrentIndex(selector.selection());
  });
  const auto* preview = dynamic_cast<Refhost::WatermarkPreview*>(tree.follow(node, "preview"));
  tree.add(node, combo, [&selector, combo, preview] {
    const QSignalBlocker quiet(combo);
    showItems(*combo, selector.items());
    combo->setCurrentIndex(selector.selection());
    showChosen(*combo);
    if (preview != nullptr) combo->setPlaceholderText(plainText(toQt(preview->watermark().face)));
  });
  pressButtonsFrom(node, tree, *combo);
  return combo;
}

}  // namespace Window
