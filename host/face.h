// What a face (a window, a script) does for the host's core. Everything else a face reads from the widget tree and the
// property model, and does through Preferences.
#pragma once

#include <optional>
#include <string>

namespace Refhost {

class Dialog;
class WidgetNode;

class Face {
 public:
  virtual ~Face() = default;

  // Shows the dialog and lets the user operate it; returns when dialog.isOpen() is false.
  virtual void runModally(Dialog& dialog) = 0;

  // A dialog that is not modal was opened; it belongs to the core and closes by its own OK or Cancel, or with the
  // preferences.
  virtual void dialogOpened(Dialog& dialog) = 0;

  // A dialog, modal or not, has closed; its widgets go right after.
  virtual void dialogClosed(Dialog& dialog) = 0;

  // A widget's state, or a list's items, changed.
  virtual void widgetChanged(WidgetNode& widget) = 0;

  // Shows a help topic: `url` is a chrome:// address of the help, `topic` the place in it.
  virtual void showHelp(const std::u16string& url, const std::u16string& topic) = 0;

  // Asks for the name of what the job creates. Nothing when the user gives none.
  virtual std::optional<std::u16string> askJobStep() = 0;

  // Something went wrong while an event was handled: one sentence for the user.
  virtual void showFailure(const std::string& sentence) = 0;

  // Something went wrong that did not keep the plug-in from what it was doing: one sentence for the user.
  virtual void tell(const std::string& sentence) { showFailure(sentence); }
};

}  // namespace Refhost
