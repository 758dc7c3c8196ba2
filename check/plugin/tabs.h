// What an opening's tabs show, and what their layouts are made of.
#pragma once

#include "check/plugin/opening.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace Checking {

// The state of each widget, a line each, with its id: what a user sees and can operate.
std::vector<std::pair<std::u16string, std::u16string>> shownState(const Opening& opening);

// The ids of all widgets of the tabs.
std::vector<std::u16string> widgetIds(const Opening& opening);

// A layout of a package.
struct LayoutFile {
  std::u16string address;
  std::filesystem::path file;
};

// The packages that the plug-in loads layouts from, and all layouts of them.
std::vector<std::string> packagesOf(const Opening& opening);
std::vector<LayoutFile> layoutsOf(const Opening& opening, const Files::LayeredFolder& resources);

}  // namespace Checking
