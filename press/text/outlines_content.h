#pragma once

#include "press/text/outlines.h"

#include <string>

namespace Press {

// Content that fills and strokes outlines in the current colours.
std::string contentOf(const Outlines& outlines);

}  // namespace Press
