// Pictures, with drops and menus, and previews of watermarks.
#pragma once

#include "host/widgets/preview.h"
#include "window/widgets/shown_tree.h"

namespace Window {

QWidget* buildImage(Refhost::ImageBox& node, ShownTree& tree, QWidget* parent);
QWidget* buildPreview(Refhost::WatermarkPreview& node, ShownTree& tree, QWidget* parent);

}  // namespace Window
