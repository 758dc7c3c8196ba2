// Adding, editing and deleting watermarks: first in the store, then in the list, then in the selection.
#include "effect/watermark/editor.h"
#include "effect/watermark/tab.h"

namespace Kiln::XUL {

using namespace Effect;

// Runs the editor; true when the record should be stored. The editor moves the selection when an entry above is about
// to be replaced; restores it, since entries are identified by their ids.
bool WatermarkTab::editWatermark(const Node& edited, bool isNew) {
  const auto selected = list ? list->selectedItem() : SmartPtr<ListItem>();
  WatermarkDlg editor(host, edited, isNew);
  editor.run();
  if (selected && !(list->selectedItem() == selected)) list->selectValue(selected->value());
  return editor.isAccepted();
}

// The id of another record with that name, which a record taking the name replaces; empty for none. A built-in record,
// whose name is a string-table reference, is compared by the displayed name.
std::u16string WatermarkTab::watermarkNamed(std::u16string_view name, std::u16string_view besides) const {
  std::u16string named = store->findIdByName(name);
  if (!named.empty() && named != besides) return named;
  const auto items = list ? list->data() : SmartPtr<ListData>();
  for (std::int32_t i = 0; items && i < items->count(); ++i) {
    const auto item = items->at(i);
    const bool isOther = item->value().view() != besides && !item->isMarked();
    if (isOther && item->text().view() == name) return item->value().str();
  }
  return {};
}

void WatermarkTab::onAddWM(EventArg<Button>) {
  const SmartPtr<Watermarks> target = store;
  const Node edited = target->makeNoneRecord();
  if (!editWatermark(edited, true)) return;

  const WString name = fieldText(*edited, Field::stylename);
  const std::u16string sameName = watermarkNamed(name.view(), {});
  bool isReplaced = false;
  std::u16string newId;
  target->changeTogether([&](Watermarks::Changes& changes) {
    isReplaced = changes.remove(sameName);
    newId = changes.add(edited);
  });
  if (isReplaced) removeItem(sameName);
  if (newId.empty()) return;
  if (list) list->data()->append(name, newId);
  refreshList();
  if (target->isFull() && addButton) addButton->disable();
  selectWatermark(newId);
}

void WatermarkTab::onEditWM(EventArg<Button>) {
  const auto item = list ? list->selectedItem() : SmartPtr<ListItem>();
  const std::u16string id = item ? item->value().str() : std::u16string(noneId);
  const SmartPtr<Watermarks> target = store;
  const Node record = target->record(id);
  if (id == noneId || !record) return;

  const Node edited = record->clone();
  const WString oldName = fieldText(*edited, Field::stylename);
  if (!editWatermark(edited, false)) return;

  const WString name = fieldText(*edited, Field::stylename);
  const std::u16string sameName = name.view() == oldName.view() ? std::u16string() : watermarkNamed(name.view(), id);
  bool isReplaced = false;
  target->changeTogether([&](Watermarks::Changes& changes) {
    isReplaced = changes.remove(sameName);
    changes.update(id, edited);
  });
  if (isReplaced) removeItem(sameName);
  item->setText(name);
  refreshList();
  selectWatermark(id);
}

void WatermarkTab::onDeleteWM(EventArg<Button>) {
  const auto dialog = host.preferences->openDialog(Address::confirmDelete);
  if (!dialog) return;
  connect(*dialog->okSignal(), *this, &WatermarkTab::onOkWMDelete);
  dialog->runModally();
}

void WatermarkTab::onOkWMDelete(SubDialogEventArg&) {
  const auto item = list ? list->selectedItem() : SmartPtr<ListItem>();
  if (!item || item->value().view() == noneId) return;
  store->removeRecord(item->value().view());
  removeItem(item->value().view());
  refreshList();
  if (addButton) {
    if (store->isFull())
      addButton->disable();
    else if (!addButton->isEnabled())
      addButton->enable();
  }
  selectWatermark(noneId);
}

void WatermarkTab::removeItem(std::u16string_view id) {
  if (!list) return;
  const auto items = list->data();
  for (std::int32_t i = 0; i < items->count(); ++i) {
    if (items->at(i)->value().view() != id) continue;
    items->remove(i);
    return;
  }
}

}  // namespace Kiln::XUL
