// Lists and combo boxes: their items, and the one that is selected.
#pragma once

#include "host/widgets/widget.h"

#include <vector>

namespace Refhost {

class ListItem final : public Kiln::XUL::ListItem {
 public:
  ListItem(const StringTables& tables, std::u16string_view itemText, std::u16string_view itemValue)
      : strings(tables),
        label(itemText),
        itemValue(itemValue) {}

  static constexpr const char* interfaceName = "Refhost::ListItem";
  void* queryInterface(Kiln::StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Kiln::XUL::ListItem::queryInterface(asked);
  }

  Kiln::WString text() override { return Refhost::text(label); }
  void setText(Kiln::WStringView text) override { label = text.view(); }
  Kiln::WString displayedText() override;
  Kiln::WString value() override { return Refhost::text(itemValue); }
  void setValue(Kiln::WStringView value) override { itemValue = value.view(); }
  void setColour(Kiln::WStringView colour) override { textColour = colour.view(); }
  Kiln::SmartPtr<Kiln::XUL::Image> image() override { return icon; }
  void setImage(Kiln::SmartPtr<Kiln::XUL::Image> image) override { icon = std::move(image); }
  bool isMarked() override { return marked; }
  void setMarked(bool mark) override { marked = mark; }
  bool flag() override { return state; }
  void setFlag(bool flag) override { state = flag; }

  // "#" and six hexadecimal digits; empty for the list's own colour.
  const std::u16string& colour() const { return textColour; }

 private:
  const StringTables& strings;
  std::u16string label;
  std::u16string itemValue;
  std::u16string textColour;
  Kiln::SmartPtr<Kiln::XUL::Image> icon;
  bool marked = false;
  bool state = false;
};

class ListData final : public Kiln::XUL::ListData {
 public:
  explicit ListData(const StringTables& tables) : strings(tables) {}

  static constexpr const char* interfaceName = "Refhost::ListData";
  void* queryInterface(Kiln::StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Kiln::XUL::ListData::queryInterface(asked);
  }

  // Whether items appended from now on are inserted in order of their displayed text.
  void setSorted(bool sort) { sorted = sort; }

  std::int32_t count() override { return static_cast<std::int32_t>(items.size()); }
  Kiln::SmartPtr<Kiln::XUL::ListItem> at(std::int32_t index) override;
  Kiln::SmartPtr<Kiln::XUL::ListItem> append(Kiln::WStringView text, Kiln::WStringView value) override;
  void insert(std::int32_t index, Kiln::SmartPtr<Kiln::XUL::ListItem> item) override;
  Kiln::SmartPtr<Kiln::XUL::ListItem> remove(std::int32_t index) override;

 private:
  const StringTables& strings;
  bool sorted = false;
  std::vector<Kiln::SmartPtr<Kiln::XUL::ListItem>> items;
};

// The interface of list and combo boxes for faces.
class SelectorNode {
 public:
  virtual ~SelectorNode() = default;
  virtual Kiln::XUL::ListData& items() = 0;
  virtual std::int32_t selection() = 0;

  // For the layout reader: selects the first item when none is selected.
  virtual void startWithFirst() = 0;

  // The user chooses the item at `index`; does nothing while disabled, or out of range. Choosing the selected item is a
  // choice too: a plug-in may have selected it for a value that is not in the list.
  virtual void choose(std::int32_t index) = 0;
};

template <class Interface>
class SelectorImpl : public WidgetImpl<Interface>, public SelectorNode {
 public:
  using ChangeSignal = HostSignal<Kiln::XUL::EventArg<Interface>>;

  SelectorImpl(WidgetWorld& world, WidgetKind kind, const std::u16string& id);

  Kiln::SmartPtr<Kiln::XUL::ListData> data() override { return list; }
  void setData(Kiln::SmartPtr<Kiln::XUL::ListData> data) override;
  std::int32_t selectedIndex() override;
  void select(std::int32_t index) override;
  bool selectValue(Kiln::WStringView value) override;
  Kiln::SmartPtr<Kiln::XUL::ListItem> selectedItem() override {
    return selectedIndex() < 0 ? Kiln::SmartPtr<Kiln::XUL::ListItem>() : selected;
  }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Interface>>> changeSignal() override { return changes; }

  Kiln::XUL::ListData& items() override { return *list; }
  std::int32_t selection() override { return selectedIndex(); }
  void startWithFirst() override {
    if (!selected) selected = list->at(0);
  }
  void choose(std::int32_t index) override;

 protected:
  // Does not trace. Updates faces even for the selected item, whose display may have changed.
  void selectItem(Kiln::SmartPtr<Kiln::XUL::ListItem> item);

 private:
  Kiln::SmartPtr<Kiln::XUL::ListData> list;
  Kiln::SmartPtr<Kiln::XUL::ListItem> selected;
  Kiln::SmartPtr<ChangeSignal> changes;
};

class ListBox final : public SelectorImpl<Kiln::XUL::ListBox> {
 public:
  using SelectorImpl::SelectorImpl;

  // Whether users can drag items from it.
  bool isDragSource() const { return attribute("draggable") == u"true"; }
};

class ComboBox final : public SelectorImpl<Kiln::XUL::ComboBox> {
 public:
  using SelectorImpl::SelectorImpl;
  void setSorted(bool sort) override;

  // For the host's own combo boxes, not traced: a listener for the user's choice, and what to show.
  void onChoice(std::function<void(const std::u16string& value)> listener) { chosen = std::move(listener); }
  void show(std::u16string_view value, bool operable);
  void choose(std::int32_t index) override;

 private:
  std::function<void(const std::u16string&)> chosen;
};

}  // namespace Refhost
