// The widgets of a layout. The host owns, draws and operates them; a plug-in finds them by id and sets their state.
//
//   1. gui->widgetById(id) finds a widget, smartCast<CheckBox>(...) makes it the kind that it should be; either may
//      give nothing, since layouts differ;
//   2. connect(*box->clickSignal(), ...) follows what the user does;
//   3. setters change what is shown.
//
// What a plug-in sets in a text box or a scroll bar fires that widget's signals, as the user's hand would. Setting a
// check mark, a selection, a list or a label fires nothing.
//
// A displayed text may be a string-table reference ("$IDS_NONE;"), which the host resolves where it shows it.
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

// A picture: a bitmap by its address, a swatch. Made by Host::image and Host::swatch.
class Image : public RefCount {};

class Widget : public RefCount {
 public:
  // Takes the widget out of sight until setVisible(true). [plug-in, ready]
  virtual void hide() = 0;

  // Lets the user operate the widget, or not; the same as setEnabled(true) and setEnabled(false). [plug-in, ready]
  virtual void enable() = 0;
  virtual void disable() = 0;

  virtual void setVisible(bool visible) = 0;
  virtual void setEnabled(bool enabled) = 0;

  // Whether the user may operate it, as far as the widget itself says. [plug-in, ready]
  virtual bool isEnabled() = 0;

  // The id in the layout; never empty for a widget that was found by its id. [plug-in, ready]
  virtual WString id() = 0;

  // The window that shows the widget; null where there is none. [plug-in, ready]
  virtual NativeWindow nativeWindow() = 0;
};

class Label : public Widget {
 public:
  virtual void setLabel(WStringView text) = 0;

  // A picture beside the text; empty takes it away. [plug-in, ready]
  virtual void setImage(SmartPtr<Image> image) = 0;
};

class ImageBox : public Widget {
 public:
  // The picture shown; empty shows none. [plug-in, ready]
  virtual void setImage(SmartPtr<Image> image) = 0;

  // Shows the picture registered under that name by GUI or dialog (see SubDialog::registerImage). [plug-in, ready]
  virtual void setResource(WStringView name) = 0;

  // Fires when an item of a list is dropped on the picture. Carries the item's value. [plug-in, ready]
  virtual SmartPtr<Signal<WString>> dropSignal() = 0;

  // Fires when an item of the context menu is chosen. Carries the item's text. [plug-in, ready]
  virtual SmartPtr<Signal<WString>> menuSignal() = 0;
};

class Button : public Widget {
 public:
  virtual void setLabel(WStringView text) = 0;
  virtual SmartPtr<Signal<EventArg<Button>>> clickSignal() = 0;
};

// What is checked or not. A user's click changes the mark first, then fires the click signal, then the change signal.
class Toggle : public Widget {
 public:
  virtual void setChecked(bool checked) = 0;
  virtual bool isChecked() = 0;
  virtual void setLabel(WStringView text) = 0;
  virtual SmartPtr<Signal<EventArg<Toggle>>> clickSignal() = 0;
  virtual SmartPtr<Signal<EventArg<Toggle>>> changeSignal() = 0;
};

class CheckBox : public Toggle {};

// Checking one unchecks the others of its group.
class RadioButton : public Toggle {};

// An entry of a list or combo box. Moved between places of a list it stays the same object.
class ListItem : public RefCount {
 public:
  // The displayed text, a string-table reference unresolved. [plug-in, ready]
  virtual WString text() = 0;
  virtual void setText(WStringView text) = 0;

  // The text as the user sees it. [plug-in, ready]
  virtual WString displayedText() = 0;

  virtual WString value() = 0;
  virtual void setValue(WStringView value) = 0;

  // "#" and six hexadecimal digits; empty for the list's own colour. [plug-in, ready]
  virtual void setColour(WStringView colour) = 0;

  // The picture in front of the text; empty when there is none. [plug-in, ready]
  virtual SmartPtr<Image> image() = 0;
  virtual void setImage(SmartPtr<Image> image) = 0;

  // The item's own mark: true for data that was downloaded for the user. [plug-in, ready]
  virtual bool isMarked() = 0;
  virtual void setMarked(bool marked) = 0;

  // A combo item's state: true while a custom entry has no value picked for it. [plug-in, ready]
  virtual bool flag() = 0;
  virtual void setFlag(bool flag) = 0;
};

// The entries of a list or combo box, in order. Made by Host::listData, or a widget's own.
class ListData : public RefCount {
 public:
  virtual std::int32_t count() = 0;

  // The item at `index`, from 0; empty when there is none. [plug-in, ready]
  virtual SmartPtr<ListItem> at(std::int32_t index) = 0;

  // A new item at the end. [plug-in, ready]
  virtual SmartPtr<ListItem> append(WStringView text, WStringView value) = 0;

  // Puts an item before the one at `index`; count() puts it at the end. [plug-in, ready]
  virtual void insert(std::int32_t index, SmartPtr<ListItem> item) = 0;

  // Takes the item at `index` out and gives it; empty when there is none. [plug-in, ready]
  virtual SmartPtr<ListItem> remove(std::int32_t index) = 0;
};

// What a list box and a combo box share: items, one of which is selected.
class Selector : public Widget {
 public:
  // The items shown; changing them is shown when the data is given again by setData. Never empty. [plug-in, ready]
  virtual SmartPtr<ListData> data() = 0;

  // Shows these items. The selection stays on the item that was selected if it is among them, else it is at the first
  // item, or at none where there are no items. [plug-in, ready]
  virtual void setData(SmartPtr<ListData> data) = 0;

  // -1 for no selection. [plug-in, ready]
  virtual std::int32_t selectedIndex() = 0;
  virtual void select(std::int32_t index) = 0;

  // Selects the first item of that value; false, and nothing changes, when there is none. [plug-in, ready]
  virtual bool selectValue(WStringView value) = 0;

  // Empty when nothing is selected. [plug-in, ready]
  virtual SmartPtr<ListItem> selectedItem() = 0;
};

class ListBox : public Selector {
 public:
  virtual SmartPtr<Signal<EventArg<ListBox>>> changeSignal() = 0;
};

class ComboBox : public Selector {
 public:
  virtual SmartPtr<Signal<EventArg<ComboBox>>> changeSignal() = 0;

  // Whether items added later are placed by their displayed text. [plug-in, ready]
  virtual void setSorted(bool sorted) = 0;
};

class TextBox;

// A change of a text box's text that is about to happen.
class TextChangeEvent : public RefCount {
 public:
  // The whole new text. [plug-in, ready]
  virtual WString text() = 0;

  // Whether the change is part of an edit that is not finished, such as an input method's composition, and is not to be
  // applied. [plug-in, ready]
  virtual bool isProvisional() = 0;

  // Refuses the change: the box keeps its text. [plug-in, ready]
  virtual void refuse() = 0;

  // The box whose text is about to change. Never empty. [plug-in, ready]
  virtual SmartPtr<TextBox> source() = 0;
};

using TextChangeEventArg = TextChangeEvent;

class TextBox : public Widget {
 public:
  virtual WString text() = 0;
  virtual void setText(WStringView text) = 0;

  // The most characters (UTF-16 units) that the user can enter. [plug-in, ready]
  virtual void setMaximumLength(std::int32_t units) = 0;

  // Fire for each change, typed and pasted. [plug-in, ready]
  virtual SmartPtr<Signal<SmartPtr<TextChangeEventArg>>> typingSignal() = 0;
  virtual SmartPtr<Signal<SmartPtr<TextChangeEventArg>>> pastingSignal() = 0;

  // Fires when the box loses the input focus. [plug-in, ready]
  virtual SmartPtr<Signal<EventArg<TextBox>>> blurSignal() = 0;
};

class IntegerTextBox : public TextBox {};

class ScrollBar : public Widget {
 public:
  virtual std::int32_t position() = 0;

  // A position outside the layout's range is moved to its nearer end. [plug-in, ready]
  virtual void setPosition(std::int32_t position) = 0;
  virtual SmartPtr<Signal<EventArg<ScrollBar>>> scrollSignal() = 0;
};

class ColorPicker : public Widget {
 public:
  // The colour picked, 0xRRGGBB. [plug-in, ready]
  virtual std::uint32_t colour() = 0;
  virtual SmartPtr<Signal<EventArg<ColorPicker>>> changeSignal() = 0;
};

// Draws a text watermark as it will look on the page. Each setter is called whenever its value changes.
class WMPreview : public Widget {
 public:
  virtual void setText(WStringView text) = 0;

  // "#" and six hexadecimal digits. [plug-in, ready]
  virtual void setColour(WStringView colour) = 0;

  // Two letters: "U", "C" or "L" for upper, centre, lower, then "L", "C" or "R" for left, centre, right. [plug-in,
  // ready]
  virtual void setPosition(WStringView code) = 0;

  // Degrees, counter-clockwise, 0 to 359. [plug-in, ready]
  virtual void setRotation(std::int32_t degrees) = 0;
  virtual void setFontFace(WStringView face) = 0;
  virtual void setBold(bool bold) = 0;
  virtual void setItalic(bool italic) = 0;

  // Points. [plug-in, ready]
  virtual void setFontSize(double points) = 0;

  // 0 is invisible; 1 and everything above is opaque. [plug-in, ready]
  virtual void setOpacity(double opacity) = 0;
};

// A box of the layout that holds other widgets.
class Container : public Widget {};

// Lines up the captions of the groups in a container. Made by Host::alignment.
class Alignment : public RefCount {
 public:
  enum Flags : std::int32_t { shareColumns = 1 };

  // Lines up the groups of `container` from now on; empty binds nothing. [plug-in, ready]
  virtual void bind(SmartPtr<Widget> container) = 0;
};

}  // namespace Kiln::XUL
