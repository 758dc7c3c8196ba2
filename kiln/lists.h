// List and combo boxes, and their items.
#pragma once

#include "kiln/widget.h"

namespace Kiln::XUL {

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

}  // namespace Kiln::XUL
