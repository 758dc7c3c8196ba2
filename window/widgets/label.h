// Labels: a text and a picture.
#pragma once

#include "window/widgets/shown_tree.h"

namespace Window {

QWidget* buildLabel(Refhost::Label& node, ShownTree& tree, QWidget* parent);

}  // namespace Window
