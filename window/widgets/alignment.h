// The columns of rows.
#pragma once

#include "window/widgets/shown_tree.h"

namespace Window {

// Aligns the controls of label and control rows in the container and its descendants, also across consecutive groups.
// In a container that shares columns, all columns of the groups are aligned.
void lineUp(const Refhost::WidgetNode& container, const ShownTree& tree);

}  // namespace Window
