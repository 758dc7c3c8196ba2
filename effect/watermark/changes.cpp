// Adding, editing and deleting watermarks: first in the store, then in the list, then in the selection.
#include "effect/watermark/editor.h"
#include "effect/watermark/tab.h"

#include <algorithm>

namespace Kiln::XUL {

using namespace Effect;

// Runs the editor; the ids of the records to replace when the record should be stored. The editor moves the selection
// when an entry above is about to be replaced; restores it, since entries are identified by their ids.
std::optional<std::vector<std::u16string>> WatermarkTab::editWatermark(const Watermarks& target, const Node& edited,
                                                                       bool isNew) {
  const auto selected = list ? list->selectedItem() : SmartPtr<ListItem>();
  WatermarkDlg editor(host, edited, isNew, [&target](std::u16string_view name) { return target.idsOfName(name); });
  editor.run();
  if (selected && !(list->selectedItem() == selected)) list->selectValue(selected->value());
  if (!editor.isAccepted() || editor.isReplacingDeclined()) return {};
  return editor.replaced();
}

void WatermarkTab::onAddWM(EventArg<Button>) {
  const SmartPtr<Watermarks> target = openedStore();
  const Node edited = target->makeNoneRecord();
  const auto replaced = editWatermark(*target, edited, true);
  if (!replaced) return;

  std::u16string newId;
  target->changeTogether([&](Watermarks::Changes& changes) {
    for (const std::u16string& id : *replaced) changes.remove(id);
    newId = changes.add(edited);
  });
  removeItems(*replaced);
  if (newId.empty()) return;
  if (list) list->data()->append(fieldText(*edited, Field::stylename), newId);
  refreshList();
  if (target->isFull() && addButton) addButton->disable();
  selectWatermark(newId);
}

void WatermarkTab::onEditWM(EventArg<Button>) {
  const SmartPtr<Watermarks> target = openedStore();
  const auto item = list ? list->selectedItem() : SmartPtr<ListItem>();
  const std::u16string id = item ? item->value().str() : std::u16string(noneId);
  const Node record = target->record(id);
  if (id == noneId || !record) return;

  const Node edited = record->clone();
  const auto replaced = editWatermark(*target, edited, false);
  if (!replaced) return;

  target->changeTogether([&](Watermarks::Changes& changes) {
    for (const std::u16string& other : *replaced) changes.remove(other);
    changes.update(id, edited);
  });
  removeItems(*replaced);
  item->setText(fieldText(*edited, Field::stylename));
  refreshList();
  selectWatermark(id);
}

// There is no entry to delete where a watermark is selected that the list does not show.
void WatermarkTab::onDeleteWM(EventArg<Button>) {
  openedStore();
  if (list && !list->selectedItem()) return;
  const auto dialog = host.preferences->openDialog(Address::confirmDelete);
  if (!dialog) return;
  connect(*dialog->okSignal(), *this, &WatermarkTab::onOkWMDelete);
  dialog->runModally();
}

void WatermarkTab::onOkWMDelete(SubDialogEventArg&) {
  const auto item = list ? list->selectedItem() : SmartPtr<ListItem>();
  if (!item || item->value().view() == noneId) return;
  const SmartPtr<Watermarks> target = openedStore();
  const std::u16string id = item->value().str();
  target->removeRecord(id);
  removeItems({id});
  refreshList();
  if (addButton) {
    if (target->isFull())
      addButton->disable();
    else if (!addButton->isEnabled())
      addButton->enable();
  }
  selectWatermark(noneId);
}

void WatermarkTab::removeItems(const std::vector<std::u16string>& ids) {
  if (!list) return;
  const auto items = list->data();
  for (std::int32_t i = items->count() - 1; i >= 0; --i)
    if (std::find(ids.begin(), ids.end(), items->at(i)->value().view()) != ids.end() &&
        items->at(i)->value().view() != noneId)
      items->remove(i);
}

}  // namespace Kiln::XUL
