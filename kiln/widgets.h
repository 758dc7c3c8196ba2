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

#include "kiln/lists.h"
#include "kiln/widget.h"

namespace Kiln::XUL {

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
