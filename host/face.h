// The operations that a face (a window, a script) provides to the host's core. A face reads everything else from the
// widget tree and the property model, and acts through Preferences.
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

  // A modeless dialog was opened. It belongs to the core; its OK or Cancel closes it, or the end of the preferences.
  virtual void dialogOpened(Dialog& dialog) = 0;

  // A dialog, modal or not, has closed; its widgets are destroyed right after.
  virtual void dialogClosed(Dialog& dialog) = 0;

  // A widget's state, or a list's items, changed.
  virtual void widgetChanged(WidgetNode& widget) = 0;

  // Shows a help topic: `url` is the chrome:// address of the help, `topic` the place in it.
  virtual void showHelp(const std::u16string& url, const std::u16string& topic) = 0;

  // Asks for the name of what the job creates. Nothing when the user enters none.
  virtual std::optional<std::u16string> askJobStep() = 0;

  // Handling an event failed: one sentence for the user.
  virtual void showFailure(const std::string& sentence) = 0;

  // Reports a failure that did not abort the plug-in's operation: one sentence for the user.
  virtual void tell(const std::string& sentence) { showFailure(sentence); }
};

}  // namespace Refhost
