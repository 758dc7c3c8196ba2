// What views need to know of a node of a widget tree.
#pragma once

#include "host/widgets/widget.h"

namespace Window {

// The number in an attribute; `otherwise` when there is none.
int number(const Refhost::WidgetNode& node, const char* attribute, int otherwise = 0);

// Whether the node is the caption of its group.
bool isCaption(const Refhost::WidgetNode& node);

// Whether the node is a container whose content is all hidden, so that it would only be a gap.
bool isEmptied(const Refhost::WidgetNode& node);

}  // namespace Window
