#include "window/dialogs/dialog_windows.h"

#include "window/dialogs/dialog_window.h"

#include <QApplication>

namespace Window {

DialogWindow& DialogWindows::add(Refhost::Dialog& dialog, const QString& subject, const Surroundings& around,
                                 QWidget* parent) {
  // Over the topmost open dialog, if any.
  QWidget* below = QApplication::activeModalWidget();
  auto* window = new DialogWindow(dialog, subject, around, below != nullptr ? below : parent);
  windows[&dialog] = window;
  return *window;
}

void DialogWindows::runModally(Refhost::Dialog& dialog, const QString& subject, const Surroundings& around,
                               QWidget* parent) {
  DialogWindow& window = add(dialog, subject, around, parent);
  window.runModally();
  window.deleteLater();
}

void DialogWindows::open(Refhost::Dialog& dialog, const Surroundings& around, QWidget* parent) {
  add(dialog, {}, around, parent).show();
}

void DialogWindows::closed(Refhost::Dialog& dialog) {
  const auto found = windows.find(&dialog);
  if (found == windows.end()) return;
  DialogWindow* window = found->second;
  windows.erase(found);
  window->finish();
}

void DialogWindows::update(const Refhost::WidgetNode& node) {
  for (const auto& [dialog, window] : windows) window->update(node);
}

}  // namespace Window
