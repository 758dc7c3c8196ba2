// The open dialogs of a plug-in, as windows over the preferences.
#pragma once

#include "host/gui.h"
#include "window/widgets/surroundings.h"

#include <map>

class QWidget;

namespace Window {

class DialogWindow;

class DialogWindows {
 public:
  // `subject` is the name of what the dialog is about, shown above it; empty for none.
  void runModally(Refhost::Dialog& dialog, const QString& subject, const Surroundings& around, QWidget* parent);
  void open(Refhost::Dialog& dialog, const Surroundings& around, QWidget* parent);
  void closed(Refhost::Dialog& dialog);
  void update(const Refhost::WidgetNode& node);

 private:
  DialogWindow& add(Refhost::Dialog& dialog, const QString& subject, const Surroundings& around, QWidget* parent);

  std::map<const Refhost::Dialog*, DialogWindow*> windows;
};

}  // namespace Window
