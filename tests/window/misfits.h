// Checks that all texts and widgets of a window fit.
#pragma once

#include <QWidget>

#include <string>
#include <vector>

namespace Testing {

// Texts that are cut off, and overlapping widgets, among the visible ones below `root`: one sentence each. Texts are
// measured against their widgets.
std::vector<std::string> misfits(const QWidget& root);

}  // namespace Testing
