// The dialogs of a plug-in, as windows over the preferences.
#pragma once

#include "host/gui.h"
#include "window/surroundings.h"
#include "window/tree_view.h"

#include <QDialog>

#include <map>
#include <memory>

class QEventLoop;
class QVBoxLayout;

namespace Window {

class DialogWindow final : public QDialog {
  Q_OBJECT

 public:
  DialogWindow(Refhost::Dialog& shownDialog, const Surroundings& around, QWidget* parent);

  void update(const Refhost::WidgetNode& node) { view->update(node); }

  // Opens the window and returns once the dialog has closed.
  void runModally();

  // Called when the dialog has closed, before its widgets are destroyed.
  void finish();

  // Closing the window or pressing Escape cancels the dialog.
  void reject() override;

 private:
  void fitOnScreen(QVBoxLayout& column);

  Refhost::Dialog& dialog;
  std::unique_ptr<TreeView> view;
  QEventLoop* loop = nullptr;
  bool finished = false;
};

// All open dialog windows.
class DialogWindows {
 public:
  void runModally(Refhost::Dialog& dialog, const Surroundings& around, QWidget* parent);
  void open(Refhost::Dialog& dialog, const Surroundings& around, QWidget* parent);
  void closed(Refhost::Dialog& dialog);
  void update(const Refhost::WidgetNode& node);

 private:
  DialogWindow& add(Refhost::Dialog& dialog, const Surroundings& around, QWidget* parent);

  std::map<const Refhost::Dialog*, DialogWindow*> windows;
};

}  // namespace Window
