// What a double-click, the Delete key and the context menu do in a list: they press the tab's buttons that belong to it
// (window/widgets/list_buttons.h).
#pragma once

#include "window/widgets/shown_tree.h"

namespace Window {

// `widget` shows the list `node`. Without an effect for a list that no button belongs to.
void pressButtonsFrom(const Refhost::WidgetNode& node, ShownTree& tree, QWidget& widget);

}  // namespace Window
