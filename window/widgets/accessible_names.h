// Labels and the widgets that they name, for access keys and screen readers.
#pragma once

#include "window/widgets/shown_tree.h"

#include <unordered_set>

namespace Window {

class AccessibleNames {
 public:
  // The widgets shown outlive the object.
  explicit AccessibleNames(ShownTree& shownTree) : tree(shownTree) {}

  // Gives every widget below `top` its label or name, again after each change of the tree.
  void update(const QWidget& top);

 private:
  void leadLabels(const Refhost::WidgetNode& node, const QWidget& top);
  void nameForReaders(const Refhost::WidgetNode& node, const QString& group);

  ShownTree& tree;
  std::unordered_set<const QWidget*> led;  // widgets with a label buddy
};

}  // namespace Window
