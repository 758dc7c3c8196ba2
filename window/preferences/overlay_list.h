// What the window adds to the plug-in's list of overlays: the button "New..." beside it, files that are dropped on it,
// and "Rename..." in its menu.
#pragma once

#include "window/language/texts.h"

#include <filesystem>
#include <functional>

class QWidget;

namespace Window {

struct OverlayListActions {
  std::function<void()> create;
  std::function<void(const std::filesystem::path& file)> createOf;
  std::function<bool()> mayRename;
  std::function<void()> rename;
};

// Adds them where `tabs` have such a list.
void addToOverlayList(QWidget& tabs, const Texts& texts, const OverlayListActions& actions);

}  // namespace Window
