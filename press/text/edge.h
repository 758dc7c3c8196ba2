#pragma once

#include "press/text/outlines.h"

#include <vector>

namespace Press {

// The outline of the union of all letters: no line runs where letters overlap or meet. Each letter is a path of closed
// contours, filled by the nonzero rule. Letters nearer to each other than `touching` count as meeting.
Path edgeOf(const std::vector<Path>& letters, double touching);

}  // namespace Press
