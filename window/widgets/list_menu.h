// Entries of a list's context menu, with keys that do the same.
#pragma once

#include <QKeySequence>
#include <QString>

#include <functional>

class QWidget;

namespace Window {

struct ListMenuEntry {
  QString label;
  QKeySequence keys;

  // Whether it can be done now.
  std::function<bool()> isOffered;
  std::function<void()> act;
};

// Adds an entry below those that the list has already.
void addToMenu(QWidget& list, ListMenuEntry entry);

}  // namespace Window
