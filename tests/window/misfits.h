// Whether all that a window shows has room.
#pragma once

#include <QWidget>

#include <string>
#include <vector>

namespace Testing {

// What is cut off, or lies over something else, among what is seen below `root`: each as a sentence. Texts are measured
// against the widgets that show them.
std::vector<std::string> misfits(const QWidget& root);

}  // namespace Testing
