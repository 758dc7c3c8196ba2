// A view of a widget tree: Qt widgets that show the tree's state and forward user input to it. Input changes nothing
// here until the tree changes.
#pragma once

#include "host/widgets/widget.h"
#include "window/widgets/accessible_names.h"
#include "window/widgets/shown_tree.h"

#include <functional>

class QPushButton;
class QWidget;

namespace Window {

class TreeView {
 public:
  // Builds the widgets for `root` and its descendants as children of `parent`. The tree outlives the view, unless the
  // view is told to forget it.
  TreeView(Refhost::WidgetNode& root, const Surroundings& around, QWidget* parent);

  // Owned by the parent given to the constructor. Object names are the ids of the tree's widgets.
  QWidget* widget() const { return top; }

  Refhost::UserActions& actions() const { return tree.actions(); }

  // Updates the view of a widget; ignores widgets of other trees.
  void update(const Refhost::WidgetNode& node);

  // Also shows a button of the tree in `button`, whose clicks call `press`.
  void adopt(const Refhost::WidgetNode& node, QPushButton& button, std::function<void()> press);

  // Drops all references to the tree, which is about to be destroyed.
  void forget() { tree.forget(); }

 private:
  void relate();

  ShownTree tree;
  AccessibleNames names;
  QWidget* top;
};

}  // namespace Window
