// What a double-click, the Delete key and the context menu do in a list: they press the tab's buttons that belong to it
// (window/widgets/list_buttons.h), and do what the window adds.
#pragma once

#include "window/widgets/shown_tree.h"

#include <QKeySequence>

#include <functional>

namespace Window {

// `widget` shows the list `node`. Without an effect for a list that no button belongs to.
void pressButtonsFrom(const Refhost::WidgetNode& node, ShownTree& tree, QWidget& widget);

// An entry of the context menu, above those of the buttons.
struct ListEntry {
  QString label;
  QKeySequence keys;  // do the same in the list; empty for none

  // Whether it can be done now.
  std::function<bool()> isOffered;
  std::function<void()> act;
};

// Adds an entry to the menu of a widget that buttons are pressed from.
void addToMenu(QWidget& list, ListEntry entry);

}  // namespace Window
