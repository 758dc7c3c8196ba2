// Draws the window and its dialogs, to be looked at.
#pragma once

#include <string>

namespace Testing {

// Writes a PNG file of the window with each tab, and of each dialog, into the folder. `palette` is light, dark or
// contrast. Needs an application. Throws std::runtime_error.
void drawAll(const std::string& folder, const std::string& locale, const std::string& palette);

}  // namespace Testing
