// The user interface: widgets as plain objects, which the script operates. Nothing is drawn.
#pragma once

#include "objects.h"

#include <functional>
#include <memory>

namespace ExampleHost {

// What all widgets have; Kind is the class of the contract.
template <class Kind>
class Shown : public Kind {
 public:
  explicit Shown(std::u16string widgetId) : name(std::move(widgetId)) {}
  void hide() override { setVisible(false); }
  void enable() override { setEnabled(true); }
  void disable() override { setEnabled(false); }
  void setVisible(bool visible) override { report((visible ? "shows " : "hides ") + narrow(name)); }
  void setEnabled(bool operable) override {
    report((operable ? "enables " : "disables ") + narrow(name));
    enabled = operable;
  }
  bool isEnabled() override { return enabled; }
  Kiln::WString id() override { return text(name); }
  Kiln::NativeWindow nativeWindow() override { return nullptr; }

 protected:
  std::u16string name;
  bool enabled = true;
};

class Button final : public Shown<Kiln::XUL::Button> {
 public:
  using Shown::Shown;
  void setLabel(Kiln::WStringView label) override { report("labels " + narrow(name) + " " + narrow(label)); }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Kiln::XUL::Button>>> clickSignal() override { return clicked; }

  void click() { clicked->fire(Kiln::XUL::EventArg<Kiln::XUL::Button>(this)); }

 private:
  OwnedEvent<Kiln::XUL::EventArg<Kiln::XUL::Button>> clicked = make<Event<Kiln::XUL::EventArg<Kiln::XUL::Button>>>();
};

class CheckBox final : public Shown<Kiln::XUL::CheckBox> {
 public:
  using Argument = Kiln::XUL::EventArg<Kiln::XUL::Toggle>;
  using Shown::Shown;
  void setChecked(bool mark) override {
    report((mark ? "checks " : "unchecks ") + narrow(name));
    checked = mark;
  }
  bool isChecked() override { return checked; }
  void setLabel(Kiln::WStringView label) override { report("labels " + narrow(name) + " " + narrow(label)); }
  Kiln::SmartPtr<Kiln::Signal<Argument>> clickSignal() override { return clicked; }
  Kiln::SmartPtr<Kiln::Signal<Argument>> changeSignal() override { return changed; }

  void click() {
    checked = !checked;
    clicked->fire(Argument(this));
    changed->fire(Argument(this));
  }

 private:
  bool checked = false;
  OwnedEvent<Argument> clicked = make<Event<Argument>>();
  OwnedEvent<Argument> changed = make<Event<Argument>>();
};

class TextChange final : public Kiln::XUL::TextChangeEvent {
 public:
  TextChange(std::u16string_view typed, Kiln::SmartPtr<Kiln::XUL::TextBox> box) : content(typed), origin(box) {}
  Kiln::WString text() override { return ExampleHost::text(content); }
  bool isProvisional() override { return false; }
  void refuse() override { isRefused = true; }
  Kiln::SmartPtr<Kiln::XUL::TextBox> source() override { return origin; }
  bool isRefused = false;

 private:
  std::u16string content;
  Kiln::SmartPtr<Kiln::XUL::TextBox> origin;
};

class TextBox final : public Shown<Kiln::XUL::TextBox> {
 public:
  using Argument = Kiln::SmartPtr<Kiln::XUL::TextChangeEventArg>;
  using Shown::Shown;
  Kiln::WString text() override { return ExampleHost::text(content); }
  void setText(Kiln::WStringView written) override {
    report("writes " + narrow(written) + " into " + narrow(name));
    change(written);
  }
  void setMaximumLength(std::int32_t units) override { most = static_cast<std::size_t>(std::max(units, 0)); }
  Kiln::SmartPtr<Kiln::Signal<Argument>> typingSignal() override { return typed; }
  Kiln::SmartPtr<Kiln::Signal<Argument>> pastingSignal() override { return pasted; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Kiln::XUL::TextBox>>> blurSignal() override { return left; }

  void type(std::u16string_view entered) { change(entered.substr(0, most)); }

 private:
  // A handler of a change may set the text, which fires nothing then.
  void change(std::u16string_view wanted) {
    if (isChanging) {
      content = wanted;
      return;
    }
    const auto event = make<TextChange>(wanted, this);
    isChanging = true;
    try {
      typed->fire(event);
    } catch (...) {
      isChanging = false;
      throw;
    }
    isChanging = false;
    if (!event->isRefused) content = wanted;
  }

  std::u16string content;
  std::size_t most = std::u16string::npos;
  bool isChanging = false;
  OwnedEvent<Argument> typed = make<Event<Argument>>();
  OwnedEvent<Argument> pasted = make<Event<Argument>>();
  OwnedEvent<Kiln::XUL::EventArg<Kiln::XUL::TextBox>> left = make<Event<Kiln::XUL::EventArg<Kiln::XUL::TextBox>>>();
};

// The widgets of each layout by its address, as the script declares them: this host reads no layouts.
using Widgets = std::map<std::u16string, Kiln::SmartPtr<Kiln::XUL::Widget>>;
using Layouts = std::map<std::u16string, Widgets>;

inline Kiln::SmartPtr<Kiln::XUL::Widget> find(const Widgets& widgets, Kiln::WStringView id) {
  const auto found = widgets.find(std::u16string(id.view()));
  return found == widgets.end() ? nullptr : found->second;
}

class DialogEvent final : public Kiln::XUL::SubDialogEventArg {
 public:
  void vetoClose() override { isVetoed = true; }
  bool isVetoed = false;
};

class PreAccept final : public Kiln::XUL::PreAcceptPanel {
 public:
  void veto() override { isVetoed = true; }
  bool isVetoed = false;
};

class TabPanel final : public Kiln::XUL::TabPanel {
 public:
  Kiln::WString selectedTabId() override { return text(selected); }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Kiln::XUL::TabPanel>>> helpSignal() override { return help; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::SmartPtr<Kiln::XUL::PreAcceptPanel>>> preAcceptSignal() override {
    return preAccept;
  }
  std::u16string selected;
  OwnedEvent<Kiln::XUL::EventArg<Kiln::XUL::TabPanel>> help = make<Event<Kiln::XUL::EventArg<Kiln::XUL::TabPanel>>>();
  OwnedEvent<Kiln::SmartPtr<Kiln::XUL::PreAcceptPanel>> preAccept =
      make<Event<Kiln::SmartPtr<Kiln::XUL::PreAcceptPanel>>>();
};

class Dialog;

class Gui final : public Kiln::XUL::GUI {
 public:
  // `actions` runs the script until the topmost dialog closes.
  Gui(const Layouts& declared, std::function<void()> actions) : layouts(declared), runActions(std::move(actions)) {}

  void load(Kiln::WStringView url) override {
    const auto layout = layouts.find(std::u16string(url.view()));
    if (layout == layouts.end()) throw failure("The script has no layout " + narrow(url) + ".");
    report("loads " + narrow(url));
    tab = layout->second;
  }
  Kiln::SmartPtr<Kiln::Signal<Kiln::SmartPtr<Kiln::XUL::GUI>>> readySignal() override { return ready; }
  Kiln::SmartPtr<Kiln::XUL::Widget> widgetById(Kiln::WStringView id) override { return find(tab, id); }
  Kiln::SmartPtr<Kiln::XUL::TabPanel> tabPanel() override { return panel; }
  inline Kiln::SmartPtr<Kiln::XUL::SubDialog> openDialog(Kiln::WStringView url) override;

  // The widget that the user can reach: in the topmost dialog, else in the tab.
  inline Kiln::SmartPtr<Kiln::XUL::Widget> operable(Kiln::WStringView id) const;

  const Layouts& layouts;
  std::function<void()> runActions;
  Widgets tab;
  std::vector<Dialog*> open;  // the topmost last
  Kiln::SmartPtr<TabPanel> panel = make<TabPanel>();
  OwnedEvent<Kiln::SmartPtr<Kiln::XUL::GUI>> ready = make<Event<Kiln::SmartPtr<Kiln::XUL::GUI>>>();
};

class Dialog final : public Kiln::XUL::SubDialog {
 public:
  Dialog(Gui& owner, Widgets declared) : gui(owner), widgets(std::move(declared)) {}
  Kiln::SmartPtr<Kiln::XUL::Widget> widgetById(Kiln::WStringView id) override { return find(widgets, id); }
  Kiln::SmartPtr<Kiln::XUL::Widget> parentWidgetById(Kiln::WStringView id) override { return gui.widgetById(id); }
  Kiln::SmartPtr<Kiln::XUL::Button> okButton() override { return ok; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::SubDialogEventArg&>> okSignal() override { return accepted; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::SubDialogEventArg&>> cancelSignal() override { return cancelled; }
  Kiln::SmartPtr<Kiln::XUL::SubDialog> openDialog(Kiln::WStringView url) override { return gui.openDialog(url); }
  void runModally() override {
    show();
    gui.runActions();
  }
  void show() override {
    if (std::find(gui.open.begin(), gui.open.end(), this) != gui.open.end())
      throw failure("The dialog is open already.");
    gui.open.push_back(this);
    addRef();  // the host holds a dialog while it is open
  }
  void registerImage(Kiln::WStringView, Kiln::WStringView) override {}

  // False when the dialog stays open.
  bool close(bool byOk) {
    DialogEvent event;
    (byOk ? accepted : cancelled)->fire(event);
    if (byOk && event.isVetoed) return false;
    std::erase(gui.open, this);
    release();
    return true;
  }

 private:
  Gui& gui;
  Widgets widgets;
  Kiln::SmartPtr<Button> ok = make<Button>(u"ok");
  OwnedEvent<Kiln::XUL::SubDialogEventArg&> accepted = make<Event<Kiln::XUL::SubDialogEventArg&>>();
  OwnedEvent<Kiln::XUL::SubDialogEventArg&> cancelled = make<Event<Kiln::XUL::SubDialogEventArg&>>();
};

Kiln::SmartPtr<Kiln::XUL::SubDialog> Gui::openDialog(Kiln::WStringView url) {
  report("opens " + narrow(url));
  const auto layout = layouts.find(std::u16string(url.view()));
  if (layout == layouts.end()) return nullptr;
  return make<Dialog>(*this, layout->second);
}

Kiln::SmartPtr<Kiln::XUL::Widget> Gui::operable(Kiln::WStringView id) const {
  return open.empty() ? find(tab, id) : open.back()->widgetById(id);
}

}  // namespace ExampleHost
