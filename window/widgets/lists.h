// List boxes and combo boxes.
#pragma once

#include "window/widgets/shown_tree.h"

namespace Window {

QWidget* buildList(Refhost::WidgetNode& node, ShownTree& tree, QWidget* parent);
QWidget* buildCombo(Refhost::WidgetNode& node, ShownTree& tree, QWidget* parent);

}  // namespace Window
