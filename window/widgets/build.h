// Builds the widgets of a tree.
#pragma once

#include "window/widgets/shown_tree.h"

namespace Window {

// Builds the widget that shows the node, and those of its descendants, as children of `parent`; adds them to `tree`.
QWidget* build(Refhost::WidgetNode& node, ShownTree& tree, QWidget* parent);

}  // namespace Window
