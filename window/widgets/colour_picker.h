// Colour pickers: a button with the colour, which opens a dialog.
#pragma once

#include "host/widgets/input.h"
#include "window/widgets/shown_tree.h"

namespace Window {

QWidget* buildColourPicker(Refhost::ColorPicker& node, ShownTree& tree, QWidget* parent);

}  // namespace Window
