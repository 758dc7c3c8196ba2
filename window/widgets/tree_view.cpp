#include "window/widgets/tree_view.h"

#include "window/widgets/alignment.h"
#include "window/widgets/build.h"
#include "window/widgets/buttons.h"

#include <utility>

namespace Window {

TreeView::TreeView(Refhost::WidgetNode& root, const Surroundings& around, QWidget* parent)
    : tree(root, around),
      names(tree),
      top(build(root, tree, parent)) {
  relate();
}

void TreeView::update(const Refhost::WidgetNode& node) {
  if (tree.update(node)) relate();
}

void TreeView::adopt(const Refhost::WidgetNode& node, QPushButton& button, std::function<void()> press) {
  showIn(button, node, tree, std::move(press));
}

// Relations between widgets depend on what is visible.
void TreeView::relate() {
  names.update(*top);
  lineUp(tree.root(), tree);
}

}  // namespace Window
