// Text boxes and sliders.
#pragma once

#include "host/widgets/input.h"
#include "window/widgets/shown_tree.h"

namespace Window {

QWidget* buildText(Refhost::WidgetNode& node, ShownTree& tree, QWidget* parent);
QWidget* buildScroll(Refhost::ScrollBar& node, ShownTree& tree, QWidget* parent);

}  // namespace Window
