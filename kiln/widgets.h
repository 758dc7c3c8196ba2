// The widgets of a layout. The host owns, draws and operates them; a plug-in finds them by id and sets their state.
//
//   1. gui->widgetById(id) finds a widget, smartCast<CheckBox>(...) asks whether it is of the expected kind; either may
//      return null, since layouts differ;
//   2. connect(*box->clickSignal(), ...) handles user input;
//   3. setters change what is shown.
//
// Setting the text of a text box or the position of a scroll bar fires the widget's signals, like user input. Setting a
// check mark, a selection, a list or a label fires nothing.
//
// A displayed text may be a string-table reference ("$IDS_NONE;"), which the host resolves where it shows it.
//
// Every text given or returned may be empty. A signal of a widget is never null, and the same object each time; it
// lives as long as the widget. A widget that a plug-in still holds when its dialog or tab is gone may be called without
// harm: it keeps its state, and shows nothing.
//
// The kinds of widget, each asked for by its interfaceName: Label, ImageBox, Button, CheckBox and RadioButton (both are
// a Toggle), ListBox and ComboBox (both are a Selector), TextBox (an IntegerTextBox is one, too), ScrollBar,
// ColorPicker, WMPreview, Container.
#pragma once

#include "kiln/native_window.h"
#include "kiln/ref_count.h"
#include "kiln/signal.h"
#include "kiln/text.h"

namespace Kiln::XUL {

// Carries the widget that an event comes from. Valid for the duration of the call.
template <class Source>
class EventArg {
 public:
  explicit EventArg(SmartPtr<Source> source) noexcept : origin(std::move(source)) {}
  Source& source() const noexcept { return *origin; }

 private:
  SmartPtr<Source> origin;
};

// A picture: a bitmap or a swatch. Made by Host::image and Host::swatch.
class Image : public RefCount {};

class Widget : public RefCount {
 public:
  static constexpr const char* interfaceName = "Widget";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : RefCount::queryInterface(asked);
  }

  // Hides the widget until setVisible(true). [plug-in, ready]
  virtual void hide() = 0;

  // Lets the user operate the widget; the same as setEnabled(true). [plug-in, ready]
  virtual void enable() = 0;

  // Keeps the user from operating the widget; the same as setEnabled(false). [plug-in, ready]
  virtual void disable() = 0;

  // Shows the widget, or hides it and gives its room away. [plug-in, ready]
  virtual void setVisible(bool visible) = 0;

  // Lets the user operate the widget and what is inside it, or not. [plug-in, ready]
  virtual void setEnabled(bool enabled) = 0;

  // The widget's own enabled state; an ancestor may still be disabled. [plug-in, ready]
  virtual bool isEnabled() = 0;

  // The id in the layout; never empty for a widget returned by widgetById. [plug-in, ready]
  virtual WString id() = 0;

  // The window that shows the widget; null when there is none. [plug-in, ready]
  virtual NativeWindow nativeWindow() = 0;
};

class Label : public Widget {
 public:
  static constexpr const char* interfaceName = "Label";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Widget::queryInterface(asked);
  }

  // The text shown. [plug-in, ready]
  virtual void setLabel(WStringView text) = 0;

  // A picture beside the text; null removes it. [plug-in, ready]
  virtual void setImage(SmartPtr<Image> image) = 0;
};

class ImageBox : public Widget {
 public:
  static constexpr const char* interfaceName = "ImageBox";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Widget::queryInterface(asked);
  }

  // The picture shown; null shows none. [plug-in, ready]
  virtual void setImage(SmartPtr<Image> image) = 0;

  // Shows the picture that the dialog has registered under that name (SubDialog::registerImage); nothing for a name
  // that it has not. [plug-in, ready]
  virtual void setResource(WStringView name) = 0;

  // Fires when an item of a list is dropped on the picture. Carries the item's value. [plug-in, ready]
  virtual SmartPtr<Signal<WString>> dropSignal() = 0;

  // Fires when an item of the context menu is chosen. Carries the item's text. [plug-in, ready]
  virtual SmartPtr<Signal<WString>> menuSignal() = 0;
};

class Button : public Widget {
 public:
  static constexpr const char* interfaceName = "Button";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Widget::queryInterface(asked);
  }

  // The text shown. [plug-in, ready]
  virtual void setLabel(WStringView text) = 0;

  // Fires when the user presses the button. [plug-in, ready]
  virtual SmartPtr<Signal<EventArg<Button>>> clickSignal() = 0;
};

// A two-state control. A user's click changes the mark first, then fires the click signal, then the change signal.
class Toggle : public Widget {
 public:
  static constexpr const char* interfaceName = "Toggle";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Widget::queryInterface(asked);
  }

  // Sets the mark; fires nothing. [plug-in, ready]
  virtual void setChecked(bool checked) = 0;

  // The mark. [plug-in, ready]
  virtual bool isChecked() = 0;

  // The text beside the mark. [plug-in, ready]
  virtual void setLabel(WStringView text) = 0;

  // Fires when the user has clicked the control. [plug-in, ready]
  virtual SmartPtr<Signal<EventArg<Toggle>>> clickSignal() = 0;

  // Fires after the click signal. [plug-in, ready]
  virtual SmartPtr<Signal<EventArg<Toggle>>> changeSignal() = 0;
};

class CheckBox : public Toggle {
 public:
  static constexpr const char* interfaceName = "CheckBox";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Toggle::queryInterface(asked);
  }
};

// Checking one unchecks the others of its group.
class RadioButton : public Toggle {
 public:
  static constexpr const char* interfaceName = "RadioButton";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Toggle::queryInterface(asked);
  }
};

// An entry of a list or combo box. Moving it within a list keeps the object. What is set here takes effect on screen
// with the next Selector::setData.
class ListItem : public RefCount {
 public:
  // The displayed text, a string-table reference unresolved. [plug-in, ready]
  virtual WString text() = 0;

  // Sets the displayed text, which may be a string-table reference. [plug-in, ready]
  virtual void setText(WStringView text) = 0;

  // The text as the user sees it. [plug-in, ready]
  virtual WString displayedText() = 0;

  // What the item stands for; not shown. [plug-in, ready]
  virtual WString value() = 0;

  // Sets what the item stands for. [plug-in, ready]
  virtual void setValue(WStringView value) = 0;

  // "#" and six hexadecimal digits; empty for the list's own colour. [plug-in, ready]
  virtual void setColour(WStringView colour) = 0;

  // The picture in front of the text; null when there is none. [plug-in, ready]
  virtual SmartPtr<Image> image() = 0;

  // Sets the picture in front of the text; null removes it. [plug-in, ready]
  virtual void setImage(SmartPtr<Image> image) = 0;

  // True for an item that was downloaded for the user. [plug-in, ready]
  virtual bool isMarked() = 0;

  // Says whether the item was downloaded for the user. [plug-in, ready]
  virtual void setMarked(bool marked) = 0;

  // For a combo box item: true while a custom entry has no value yet. [plug-in, ready]
  virtual bool flag() = 0;

  // Says whether a custom entry has no value yet. [plug-in, ready]
  virtual void setFlag(bool flag) = 0;
};

// The entries of a list or combo box, in order. Made by Host::listData, or owned by a widget.
class ListData : public RefCount {
 public:
  // The number of items. [plug-in, ready]
  virtual std::int32_t count() = 0;

  // The item at `index`, from 0; null when there is none. [plug-in, ready]
  virtual SmartPtr<ListItem> at(std::int32_t index) = 0;

  // A new item at the end, or where the order of a sorted combo box puts it. [plug-in, ready]
  virtual SmartPtr<ListItem> append(WStringView text, WStringView value) = 0;

  // Puts an item before the one at `index`; count() puts it at the end. Throws Exception when `index` is out of range.
  // [plug-in, ready]
  virtual void insert(std::int32_t index, SmartPtr<ListItem> item) = 0;

  // Removes and returns the item at `index`; null when out of range. [plug-in, ready]
  virtual SmartPtr<ListItem> remove(std::int32_t index) = 0;
};

// Base of list and combo boxes: items, at most one of which is selected.
class Selector : public Widget {
 public:
  static constexpr const char* interfaceName = "Selector";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Widget::queryInterface(asked);
  }

  // The items shown. Changes take effect on screen with the next setData. Never null. [plug-in, ready]
  virtual SmartPtr<ListData> data() = 0;

  // Shows these items. The selected item stays selected if it is among them; otherwise the first item is selected, if
  // any. [plug-in, ready]
  virtual void setData(SmartPtr<ListData> data) = 0;

  // The selected item's index; -1 for no selection. [plug-in, ready]
  virtual std::int32_t selectedIndex() = 0;

  // Selects the item at `index`; nothing is selected after one that is out of range. [plug-in, ready]
  virtual void select(std::int32_t index) = 0;

  // Selects the first item with that value; false, without a change, when there is none. [plug-in, ready]
  virtual bool selectValue(WStringView value) = 0;

  // The selected item; null when nothing is selected. [plug-in, ready]
  virtual SmartPtr<ListItem> selectedItem() = 0;
};

class ListBox : public Selector {
 public:
  static constexpr const char* interfaceName = "ListBox";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Selector::queryInterface(asked);
  }

  // Fires when the user has chosen an item, even the one that was selected. [plug-in, ready]
  virtual SmartPtr<Signal<EventArg<ListBox>>> changeSignal() = 0;
};

class ComboBox : public Selector {
 public:
  static constexpr const char* interfaceName = "ComboBox";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Selector::queryInterface(asked);
  }

  // Fires when the user has chosen an item, even the one that was selected. [plug-in, ready]
  virtual SmartPtr<Signal<EventArg<ComboBox>>> changeSignal() = 0;

  // Whether items added from now on are inserted in order of their displayed text. [plug-in, ready]
  virtual void setSorted(bool sorted) = 0;
};

class TextBox;

// A pending change of a text box's text.
class TextChangeEvent : public RefCount {
 public:
  // The whole new text. [plug-in, ready]
  virtual WString text() = 0;

  // Whether the change belongs to an unfinished edit, such as an input method's composition, and must not be applied.
  // [plug-in, ready]
  virtual bool isProvisional() = 0;

  // Rejects the change: the box keeps its text. [plug-in, ready]
  virtual void refuse() = 0;

  // The box whose text is about to change. Never null. [plug-in, ready]
  virtual SmartPtr<TextBox> source() = 0;
};

using TextChangeEventArg = TextChangeEvent;

class TextBox : public Widget {
 public:
  static constexpr const char* interfaceName = "TextBox";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Widget::queryInterface(asked);
  }

  // The text as it stands; during a change, the one before it. [plug-in, ready]
  virtual WString text() = 0;

  // Sets the text, whatever its length. Fires the typing signal, and is refused by it, like the user's typing; except
  // from a handler of a change to that same text. [plug-in, ready]
  virtual void setText(WStringView text) = 0;

  // The maximum number of UTF-16 units that the user can enter; what is below 0 counts as 0. [plug-in, ready]
  virtual void setMaximumLength(std::int32_t units) = 0;

  // Fires for each typed change, before it is made. [plug-in, ready]
  virtual SmartPtr<Signal<SmartPtr<TextChangeEventArg>>> typingSignal() = 0;

  // Fires for each pasted change, before it is made. [plug-in, ready]
  virtual SmartPtr<Signal<SmartPtr<TextChangeEventArg>>> pastingSignal() = 0;

  // Fires when the box loses the input focus. [plug-in, ready]
  virtual SmartPtr<Signal<EventArg<TextBox>>> blurSignal() = 0;
};

class IntegerTextBox : public TextBox {
 public:
  static constexpr const char* interfaceName = "IntegerTextBox";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : TextBox::queryInterface(asked);
  }
};

class ScrollBar : public Widget {
 public:
  static constexpr const char* interfaceName = "ScrollBar";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Widget::queryInterface(asked);
  }

  // The position, within the layout's range. [plug-in, ready]
  virtual std::int32_t position() = 0;

  // Moves the bar and fires its signal, except from a handler of that same position. A position outside the layout's
  // range is clamped. [plug-in, ready]
  virtual void setPosition(std::int32_t position) = 0;

  // Fires when the bar has moved. [plug-in, ready]
  virtual SmartPtr<Signal<EventArg<ScrollBar>>> scrollSignal() = 0;
};

class ColorPicker : public Widget {
 public:
  static constexpr const char* interfaceName = "ColorPicker";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Widget::queryInterface(asked);
  }

  // The colour picked, 0xRRGGBB. [plug-in, ready]
  virtual std::uint32_t colour() = 0;

  // Fires when the user has picked a colour, even the one that was picked. [plug-in, ready]
  virtual SmartPtr<Signal<EventArg<ColorPicker>>> changeSignal() = 0;
};

// Draws a text watermark as it will look on the page. Each setter is called whenever its value changes.
class WMPreview : public Widget {
 public:
  static constexpr const char* interfaceName = "WMPreview";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Widget::queryInterface(asked);
  }

  // The watermark's text. [plug-in, ready]
  virtual void setText(WStringView text) = 0;

  // "#" and six hexadecimal digits. [plug-in, ready]
  virtual void setColour(WStringView colour) = 0;

  // Two letters: "U", "C" or "L" for upper, centre, lower, then "L", "C" or "R" for left, centre, right. [plug-in,
  // ready]
  virtual void setPosition(WStringView code) = 0;

  // Degrees, counter-clockwise, 0 to 359. [plug-in, ready]
  virtual void setRotation(std::int32_t degrees) = 0;

  // The font's name; a similar one stands in for one that is not installed. [plug-in, ready]
  virtual void setFontFace(WStringView face) = 0;

  // Whether the text is bold. [plug-in, ready]
  virtual void setBold(bool bold) = 0;

  // Whether the text is italic. [plug-in, ready]
  virtual void setItalic(bool italic) = 0;

  // Points. [plug-in, ready]
  virtual void setFontSize(double points) = 0;

  // 0 is invisible; 1 and everything above is opaque. [plug-in, ready]
  virtual void setOpacity(double opacity) = 0;
};

// A box of the layout that holds other widgets.
class Container : public Widget {
 public:
  static constexpr const char* interfaceName = "Container";
  void* queryInterface(StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Widget::queryInterface(asked);
  }
};

// Aligns the captions of the groups in a container. Made by Host::alignment.
class Alignment : public RefCount {
 public:
  enum Flags : std::int32_t { shareColumns = 1 };

  // Aligns the groups of `container` from now on; null is ignored. [plug-in, ready]
  virtual void bind(SmartPtr<Widget> container) = 0;
};

}  // namespace Kiln::XUL
