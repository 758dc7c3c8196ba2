// The host has no profiles here, so the menu has none.
#include "window/preferences_window.h"

namespace Window {

void PreferencesWindow::addProfileEntries(QMenu&) {}

}  // namespace Window
