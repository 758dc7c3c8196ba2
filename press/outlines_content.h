#pragma once

#include <string>

#include "press/outlines.h"

namespace Press {

/// Content that draws outlines in the colours that are set, filled and along their lines.
std::string contentOf(const Outlines& outlines);

}  // namespace Press
