// The widget tree: the state of every widget, and the user's actions on it. Nothing is drawn here; faces show it.
#pragma once

#include "host/object.h"
#include "host/signal.h"
#include "kiln/widgets.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

class StringTables;

enum class WidgetKind {
  box,       // arranges its children in a row or a column
  groupBox,  // a box with a frame and a caption (its label)
  tab,       // a page of the preferences; its label is the tab's
  spacer,    // flexible space
  label,
  image,
  button,
  checkBox,
  radioButton,
  listBox,
  comboBox,
  textBox,
  integerTextBox,
  scrollBar,
  colorPicker,
  preview,
};

// The kind's name in scripts: "checkbox", "listbox" ...
const char* nameOf(WidgetKind kind);

class WidgetNode;

// The environment shared by the widgets of a layout.
struct WidgetWorld {
  const Trace& trace;
  const StringTables& strings;

  // The screen that shows the widgets; may be null.
  Kiln::NativeWindow window;

  // Runs a user action and handles exceptions of plug-in code.
  std::function<void(const std::function<void()>&)> dispatch;

  // Called after the plug-in or the user changed a widget's state.
  std::function<void(WidgetNode&)> changed;
};

// A widget as seen by faces. Its parent owns it; plug-ins hold references through its Kiln interface.
class WidgetNode {
 public:
  WidgetNode(WidgetWorld& widgetWorld, WidgetKind widgetKind, std::u16string widgetId)
      : world(widgetWorld),
        widgetKind(widgetKind),
        widgetId(std::move(widgetId)) {}
  WidgetNode(const WidgetNode&) = delete;
  WidgetNode& operator=(const WidgetNode&) = delete;
  virtual ~WidgetNode();

  WidgetKind kind() const { return widgetKind; }

  // Empty when the layout gives the widget none.
  const std::u16string& id() const { return widgetId; }

  // The widget's own state; isShown and isOperable include all ancestors.
  bool isVisible() const { return visible; }
  bool isEnabled() const { return enabled; }
  bool isShown() const;
  bool isOperable() const;

  // The label as set, and as displayed.
  const std::u16string& label() const { return labelText; }
  std::u16string shownLabel() const;

  // Other layout attributes: "orient", "flex", "control", "accesskey" and so on; empty for an unknown name.
  std::u16string attribute(const std::string& name) const;

  WidgetNode* parent() const { return parentNode; }
  const std::vector<WidgetNode*>& children() const { return childNodes; }

  // The interface for plug-ins.
  virtual Kiln::XUL::Widget& asWidget() = 0;

  // For the layout reader: initial states, not traced.
  void adopt(WidgetNode& child);
  void setAttribute(const std::string& name, std::u16string value) { attributes[name] = std::move(value); }
  void initialise(bool startsVisible, bool startsEnabled, std::u16string startLabel);

 protected:
  void changeVisible(bool value);
  void changeEnabled(bool value);
  void changeLabel(std::u16string_view label);

  // Records a "widget" event in the trace.
  void record(std::string_view operation, std::optional<TraceValue> value = {}) const;
  void changed() { world.changed(*this); }

  WidgetWorld& world;

 private:
  WidgetKind widgetKind;
  std::u16string widgetId;
  bool visible = true;
  bool enabled = true;
  std::u16string labelText;
  std::map<std::string, std::u16string> attributes;
  WidgetNode* parentNode = nullptr;
  std::vector<WidgetNode*> childNodes;
  std::vector<Kiln::SmartPtr<Kiln::XUL::Widget>> owned;
};

// Implements Kiln::XUL::Widget on the node's state, for a derived interface.
template <class Interface>
class WidgetImpl : public Interface, public WidgetNode {
 public:
  using WidgetNode::WidgetNode;

  void hide() override { traced("hide").changeVisible(false); }
  void enable() override { traced("enable").changeEnabled(true); }
  void disable() override { traced("disable").changeEnabled(false); }
  void setVisible(bool value) override { traced("setVisible", value).changeVisible(value); }
  void setEnabled(bool value) override { traced("setEnabled", value).changeEnabled(value); }
  bool isEnabled() override { return WidgetNode::isEnabled(); }
  Kiln::WString id() override { return text(WidgetNode::id()); }
  Kiln::NativeWindow nativeWindow() override { return world.window; }
  Kiln::XUL::Widget& asWidget() override { return *this; }

 private:
  WidgetImpl& traced(std::string_view operation, std::optional<TraceValue> value = {}) {
    record(operation, std::move(value));
    return *this;
  }
};

// A box, a group box, a tab or a spacer.
class Container final : public WidgetImpl<Kiln::XUL::Container> {
 public:
  using WidgetImpl::WidgetImpl;

  static constexpr const char* interfaceName = "Refhost::Container";
  void* queryInterface(Kiln::StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : WidgetImpl::queryInterface(asked);
  }

  // Whether the captions of the groups in it are aligned.
  bool sharesColumns() const { return columnsShared; }
  void shareColumns();

 private:
  bool columnsShared = false;
};

class Label final : public WidgetImpl<Kiln::XUL::Label> {
 public:
  using WidgetImpl::WidgetImpl;

  void setLabel(Kiln::WStringView label) override { changeLabel(label); }
  void setImage(Kiln::SmartPtr<Kiln::XUL::Image> picture) override;
  const Kiln::SmartPtr<Kiln::XUL::Image>& image() const { return shownImage; }

 private:
  Kiln::SmartPtr<Kiln::XUL::Image> shownImage;
};

class Button final : public WidgetImpl<Kiln::XUL::Button> {
 public:
  Button(WidgetWorld& world, WidgetKind kind, const std::u16string& id);

  void setLabel(Kiln::WStringView label) override { changeLabel(label); }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Kiln::XUL::Button>>> clickSignal() override { return clicks; }

  // The user presses the button; does nothing while disabled.
  void click();

 private:
  Kiln::SmartPtr<HostSignal<Kiln::XUL::EventArg<Kiln::XUL::Button>>> clicks;
};

// The check mark and the signals of check boxes and radio buttons.
template <class Interface>
class ToggleImpl : public WidgetImpl<Interface> {
 public:
  using ToggleSignal = HostSignal<Kiln::XUL::EventArg<Kiln::XUL::Toggle>>;

  ToggleImpl(WidgetWorld& world, WidgetKind kind, const std::u16string& id)
      : WidgetImpl<Interface>(world, kind, id),
        clicks(make<ToggleSignal>(world.trace, "click", id)),
        changes(make<ToggleSignal>(world.trace, "change", id)) {}

  void setChecked(bool mark) override {
    this->record("setChecked", mark);
    changeMark(mark);
  }
  bool isChecked() override { return checked; }
  void setLabel(Kiln::WStringView label) override { this->changeLabel(label); }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Kiln::XUL::Toggle>>> clickSignal() override { return clicks; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Kiln::XUL::Toggle>>> changeSignal() override { return changes; }

  // For the layout reader.
  void startChecked(bool mark) { checked = mark; }

 protected:
  void changeMark(bool mark) {
    if (checked == mark) return;
    checked = mark;
    this->changed();
  }
  void fire() {
    this->world.dispatch([this] {
      const Kiln::SmartPtr<Kiln::XUL::Toggle> self(this);
      clicks->fire(Kiln::XUL::EventArg<Kiln::XUL::Toggle>(self));
      changes->fire(Kiln::XUL::EventArg<Kiln::XUL::Toggle>(self));
    });
  }

  bool checked = false;

 private:
  Kiln::SmartPtr<ToggleSignal> clicks;
  Kiln::SmartPtr<ToggleSignal> changes;
};

class CheckBox final : public ToggleImpl<Kiln::XUL::CheckBox> {
 public:
  using ToggleImpl::ToggleImpl;

  // The user clicks the box: the mark changes, then the signals fire; does nothing while disabled.
  void click();
};

// An entry of a context menu: the text that its choice sends, and the displayed label, unresolved.
struct MenuItem {
  std::u16string text;
  std::u16string label;
};

// An image in the layout. The attribute droptarget="true" allows dropping list items on it.
class ImageBox final : public WidgetImpl<Kiln::XUL::ImageBox> {
 public:
  ImageBox(WidgetWorld& world, WidgetKind kind, const std::u16string& id);

  void setImage(Kiln::SmartPtr<Kiln::XUL::Image> picture) override;
  void setResource(Kiln::WStringView name) override;
  Kiln::SmartPtr<Kiln::Signal<Kiln::WString>> dropSignal() override { return drops; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::WString>> menuSignal() override { return menus; }

  // Empty while no picture is shown.
  const Kiln::SmartPtr<Kiln::XUL::Image>& image() const { return shownImage; }

  // The name of the resource shown; empty otherwise.
  const std::u16string& resource() const { return shownResource; }

  // The entries of its context menu; usually none.
  const std::vector<MenuItem>& menu() const { return menuItems; }
  bool isDropTarget() const { return attribute("droptarget") == u"true"; }

  // The user drops the list item with that value, or chooses an entry of the context menu; does nothing while disabled,
  // or when drops are not accepted, or there is no such entry.
  void drop(const std::u16string& value);
  void choose(const std::u16string& text);

  // For the layout reader.
  void addMenuItem(MenuItem item) { menuItems.push_back(std::move(item)); }

 private:
  Kiln::SmartPtr<Kiln::XUL::Image> shownImage;
  std::u16string shownResource;
  std::vector<MenuItem> menuItems;
  Kiln::SmartPtr<HostSignal<Kiln::WString>> drops;
  Kiln::SmartPtr<HostSignal<Kiln::WString>> menus;
};

}  // namespace Refhost
