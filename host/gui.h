// The preferences' user interface: tabs of widgets, and the dialogs over them.
#pragma once

#include "host/chrome/layout.h"
#include "host/face.h"
#include "host/object.h"
#include "host/signal.h"
#include "host/user_actions.h"
#include "kiln/gui.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

class Gui;

// The environment of the GUI and its dialogs.
struct GuiWorld {
  Face& face;
  const LayoutReader& layouts;
  WidgetWorld& widgets;

  // Called before a dialog waits for the user; empty when nobody needs to know.
  std::function<void()> beforeModal = {};

  std::shared_ptr<UserActions> actions = std::make_shared<UserActions>();
};

class TabPanel final : public Kiln::XUL::TabPanel {
 public:
  explicit TabPanel(const Trace& eventTrace);

  Kiln::WString selectedTabId() override { return text(selectedTab); }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Kiln::XUL::TabPanel>>> helpSignal() override { return help; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::SmartPtr<Kiln::XUL::PreAcceptPanel>>> preAcceptSignal() override {
    return preAccept;
  }

  // User actions: select a tab, ask for help, accept (false when vetoed). Exceptions of handlers propagate.
  void select(std::u16string id) { selectedTab = std::move(id); }
  void fireHelp();
  bool firePreAccept();

 private:
  const Trace& trace;
  std::u16string selectedTab;
  Kiln::SmartPtr<HostSignal<Kiln::XUL::EventArg<Kiln::XUL::TabPanel>>> help;
  Kiln::SmartPtr<HostSignal<Kiln::SmartPtr<Kiln::XUL::PreAcceptPanel>>> preAccept;
};

// A dialog over the preferences or another dialog.
class Dialog final : public Kiln::XUL::SubDialog {
 public:
  Dialog(Gui& owner, std::u16string url, Layout layout);

  static constexpr const char* interfaceName = "Refhost::Dialog";
  void* queryInterface(Kiln::StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : SubDialog::queryInterface(asked);
  }

  const std::u16string& url() const { return address; }
  Layout& layout() { return content; }
  bool isOpen() const { return open; }
  bool isModal() const { return modal; }

  // The OK button; enabled while the user can accept.
  Button& ok() { return *content.acceptButton; }

  // The user presses OK; false when the button is disabled or a handler vetoes, and the dialog stays open.
  bool accept();

  // The user presses Cancel, or closes the dialog. It stays open when a handler throws.
  void cancel();

  // The same, when the preferences end without the user's doing.
  void dismiss();

  // Closes the dialog without notifying the plug-in.
  void close();

  // The address of the picture registered under that name; empty for none.
  std::u16string imageAddress(const std::u16string& name) const;

  // Kiln::XUL::SubDialog
  Kiln::SmartPtr<Kiln::XUL::Widget> widgetById(Kiln::WStringView id) override;
  Kiln::SmartPtr<Kiln::XUL::Widget> parentWidgetById(Kiln::WStringView id) override;
  Kiln::SmartPtr<Kiln::XUL::Button> okButton() override;
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::SubDialogEventArg&>> okSignal() override { return okFired; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::SubDialogEventArg&>> cancelSignal() override { return cancelFired; }
  Kiln::SmartPtr<Kiln::XUL::SubDialog> openDialog(Kiln::WStringView url) override;
  void runModally() override;
  void show() override;
  void registerImage(Kiln::WStringView name, Kiln::WStringView url) override;

 private:
  bool fireOk();
  void start(bool modally);

  Gui& gui;
  std::u16string address;
  Layout content;
  bool open = false;
  bool modal = false;
  std::map<std::u16string, std::u16string> images;  // addresses by name
  Kiln::SmartPtr<HostSignal<Kiln::XUL::SubDialogEventArg&>> okFired;
  Kiln::SmartPtr<HostSignal<Kiln::XUL::SubDialogEventArg&>> cancelFired;
};

class Gui final : public Kiln::XUL::GUI {
 public:
  Gui(GuiWorld guiWorld, const Trace& eventTrace);

  // Layouts in loading order; each root is a tab of the preferences.
  const std::vector<Layout>& tabs() const { return layouts; }
  TabPanel& panel() { return *panelOfTabs; }

  // Loads a layout of the host or a plug-in. Throws std::runtime_error with file and line.
  void loadTab(std::u16string_view url);

  // Fires the ready signal once the layout is live. Exceptions of handlers propagate.
  void fireReady();

  // Open dialogs, the topmost last.
  const std::vector<Kiln::SmartPtr<Dialog>>& openDialogs() const { return dialogs; }

  // Cancels every open dialog, innermost first; closes one whose handler throws.
  void cancelDialogs();

  // The widget with that id among the tabs; null when there is none.
  WidgetNode* find(std::u16string_view id) const;

  // Kiln::XUL::GUI
  void load(Kiln::WStringView url) override;
  Kiln::SmartPtr<Kiln::Signal<Kiln::SmartPtr<Kiln::XUL::GUI>>> readySignal() override { return ready; }
  Kiln::SmartPtr<Kiln::XUL::Widget> widgetById(Kiln::WStringView id) override;
  Kiln::SmartPtr<Kiln::XUL::TabPanel> tabPanel() override { return panelOfTabs; }
  Kiln::SmartPtr<Kiln::XUL::SubDialog> openDialog(Kiln::WStringView url) override;

 private:
  friend class Dialog;

  GuiWorld world;
  const Trace& trace;
  std::vector<Layout> layouts;
  std::vector<Kiln::SmartPtr<Dialog>> dialogs;
  Kiln::SmartPtr<TabPanel> panelOfTabs;
  Kiln::SmartPtr<HostSignal<Kiln::SmartPtr<Kiln::XUL::GUI>>> ready;
};

}  // namespace Refhost
