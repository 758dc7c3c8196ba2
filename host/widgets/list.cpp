#include "host/widgets/list.h"

#include "host/chrome/strings.h"

#include <algorithm>

namespace Refhost {

Kiln::WString ListItem::displayedText() { return Refhost::text(strings.resolve(label)); }

Kiln::SmartPtr<Kiln::XUL::ListItem> ListData::at(std::int32_t index) {
  if (index < 0 || index >= count()) return {};
  return items[static_cast<std::size_t>(index)];
}

Kiln::SmartPtr<Kiln::XUL::ListItem> ListData::append(Kiln::WStringView text, Kiln::WStringView value) {
  Kiln::SmartPtr<Kiln::XUL::ListItem> item = make<ListItem>(strings, text.view(), value.view());
  auto place = items.end();
  if (sorted)
    place = std::upper_bound(items.begin(), items.end(), item, [](const auto& a, const auto& b) {
      return a->displayedText().view() < b->displayedText().view();
    });
  items.insert(place, item);
  return item;
}

void ListData::insert(std::int32_t index, Kiln::SmartPtr<Kiln::XUL::ListItem> item) {
  if (index < 0 || index > count()) throw failure("A list item was inserted at a place that the list does not have.");
  demandGiven(item, "ListData::insert", "an item");
  items.insert(items.begin() + index, std::move(item));
}

Kiln::SmartPtr<Kiln::XUL::ListItem> ListData::remove(std::int32_t index) {
  auto item = at(index);
  if (item) items.erase(items.begin() + index);
  return item;
}

template <class Interface>
SelectorImpl<Interface>::SelectorImpl(WidgetWorld& world, WidgetKind kind, const std::u16string& id)
    : WidgetImpl<Interface>(world, kind, id),
      list(make<ListData>(world.strings)),
      changes(make<ChangeSignal>(world.trace, "change", id)) {}

template <class Interface>
void SelectorImpl<Interface>::setData(Kiln::SmartPtr<Kiln::XUL::ListData> data) {
  list = givenBack<ListData>(data, "Selector::setData", "data");
  if (selectedIndex() < 0) selected = list->at(0);
  this->changed();
}

template <class Interface>
std::int32_t SelectorImpl<Interface>::selectedIndex() {
  for (std::int32_t i = 0; selected && i < list->count(); ++i)
    if (list->at(i) == selected) return i;
  return -1;
}

template <class Interface>
void SelectorImpl<Interface>::select(std::int32_t index) {
  this->record("select", double(index));
  selectItem(list->at(index));
}

template <class Interface>
bool SelectorImpl<Interface>::selectValue(Kiln::WStringView value) {
  for (std::int32_t i = 0; i < list->count(); ++i) {
    const auto item = list->at(i);
    if (item->value().view() != value.view()) continue;
    this->record("select", std::u16string(value.view()));
    selectItem(item);
    return true;
  }
  return false;
}

template <class Interface>
void SelectorImpl<Interface>::choose(std::int32_t index) {
  const auto item = list->at(index);
  if (!this->isOperable() || !item) return;
  selectItem(item);
  this->world.dispatch([this] { changes->fire(Kiln::XUL::EventArg<Interface>(Kiln::SmartPtr<Interface>(this))); });
}

template <class Interface>
void SelectorImpl<Interface>::selectItem(Kiln::SmartPtr<Kiln::XUL::ListItem> item) {
  selected = std::move(item);
  this->changed();
}

template class SelectorImpl<Kiln::XUL::ListBox>;
template class SelectorImpl<Kiln::XUL::ComboBox>;

void ComboBox::setSorted(bool sort) {
  if (const auto own = Kiln::smartCast<ListData>(data())) own->setSorted(sort);
}

void ComboBox::show(std::u16string_view value, bool operable) {
  changeEnabled(operable);
  for (std::int32_t i = 0; i < items().count(); ++i)
    if (items().at(i)->value().view() == value) return selectItem(items().at(i));
}

void ComboBox::choose(std::int32_t index) {
  const auto before = selectedItem();
  SelectorImpl::choose(index);
  if (chosen && selectedItem() && selectedItem() != before) chosen(selectedItem()->value().str());
}

}  // namespace Refhost
