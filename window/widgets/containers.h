// Boxes, tabs and groups, which lay out their children.
#pragma once

#include "window/widgets/shown_tree.h"

namespace Window {

QWidget* buildBox(Refhost::WidgetNode& node, ShownTree& tree, QWidget* parent);
QWidget* buildGroup(Refhost::WidgetNode& node, ShownTree& tree, QWidget* parent);

}  // namespace Window
