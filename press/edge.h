#pragma once

#include <vector>

#include "press/outlines.h"

namespace Press {

/// The edge of letters as of one shape: where they overlap or meet, no line runs through what they enclose together.
/// Each letter is a path of closed contours, filled by the nonzero rule. Letters nearer to each other than `touching`
/// meet.
Path edgeOf(const std::vector<Path>& letters, double touching);

}  // namespace Press
