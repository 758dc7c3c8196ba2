// A dialog of a plug-in, as a window over the preferences.
#pragma once

#include "host/gui.h"
#include "window/widgets/tree_view.h"

#include <QDialog>

#include <memory>

class QDialogButtonBox;
class QEventLoop;
class QScrollArea;
class QVBoxLayout;

namespace Window {

class DialogWindow final : public QDialog {
  Q_OBJECT

 public:
  // `subject` is the name of what the dialog is about, shown above its content; empty for none.
  DialogWindow(Refhost::Dialog& shownDialog, const QString& subject, const Surroundings& around, QWidget* parent);

  void update(const Refhost::WidgetNode& node) { view->update(node); }

  // Opens the window and returns once the dialog has closed.
  void runModally();

  // Called when the dialog has closed, before its widgets are destroyed.
  void finish();

  // Closing the window or pressing Escape cancels the dialog.
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void fitOnScreen(QVBoxLayout& column, QDialogButtonBox& buttons);

  bool showsCorrection();

  Refhost::Dialog& dialog;
  std::unique_ptr<TreeView> view;
  QScrollArea* scroll = nullptr;  // around the content that does not fit on the screen
  QEventLoop* loop = nullptr;
  bool finished = false;
  bool wasCorrected = false;  // a number, by the press of the mouse on the button that accepts
};

}  // namespace Window
