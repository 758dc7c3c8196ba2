// Adding, editing and deleting watermarks: first in the store, then in the list, then in the selection.
#include "effect/effect_plugin.h"
#include "effect/watermark/editor.h"

namespace Kiln::XUL {

using namespace Effect;

// Runs the editor; true when the record should be stored. The editor moves the selection when an entry above is about
// to be replaced; restores it, since entries are identified by their ids.
bool EffectPlugin::editWatermark(const Node& edited, bool isNew) {
  const auto selected = watermark.list ? watermark.list->selectedItem() : SmartPtr<ListItem>();
  const WatermarkDlg editor(tabHost, edited, isNew);
  if (selected && !(watermark.list->selectedItem() == selected)) watermark.list->selectValue(selected->value());
  return editor.isAccepted();
}

// The id of another record with that name, which a record taking the name replaces; empty for none. A built-in record,
// whose name is a string-table reference, is compared by the displayed name.
std::u16string EffectPlugin::watermarkNamed(std::u16string_view name, std::u16string_view besides) {
  std::u16string named = watermark.store->findIdByName(name);
  if (!named.empty() && named != besides) return named;
  const auto items = watermark.list ? watermark.list->data() : SmartPtr<ListData>();
  for (std::int32_t i = 0; items && i < items->count(); ++i) {
    const auto item = items->at(i);
    const bool isOther = item->value().view() != besides && !item->isMarked();
    if (isOther && item->text().view() == name) return item->value().str();
  }
  return {};
}

void EffectPlugin::onAddWM(EventArg<Button>) {
  const SmartPtr<Watermarks> store = watermark.store;
  const Node edited = store->makeNoneRecord();
  if (!editWatermark(edited, true)) return;

  const WString name = fieldText(*edited, Field::stylename);
  const std::u16string sameName = watermarkNamed(name.view(), {});
  bool isReplaced = false;
  std::u16string newId;
  store->changeTogether([&](Watermarks::Changes& changes) {
    isReplaced = changes.remove(sameName);
    newId = changes.add(edited);
  });
  if (isReplaced) removeWatermarkItem(sameName);
  if (newId.empty()) return;
  if (watermark.list) watermark.list->data()->append(name, newId);
  refreshWatermarkList();
  if (store->isFull() && watermark.addButton) watermark.addButton->disable();
  selectWatermark(newId);
}

void EffectPlugin::onEditWM(EventArg<Button>) {
  const auto item = watermark.list ? watermark.list->selectedItem() : SmartPtr<ListItem>();
  const std::u16string id = item ? item->value().str() : std::u16string(noneId);
  const SmartPtr<Watermarks> store = watermark.store;
  const Node record = store->record(id);
  if (id == noneId || !record) return;

  const Node edited = record->clone();
  const WString oldName = fieldText(*edited, Field::stylename);
  if (!editWatermark(edited, false)) return;

  const WString name = fieldText(*edited, Field::stylename);
  const std::u16string sameName = name.view() == oldName.view() ? std::u16string() : watermarkNamed(name.view(), id);
  bool isReplaced = false;
  store->changeTogether([&](Watermarks::Changes& changes) {
    isReplaced = changes.remove(sameName);
    changes.update(id, edited);
  });
  if (isReplaced) removeWatermarkItem(sameName);
  item->setText(name);
  refreshWatermarkList();
  selectWatermark(id);
}

void EffectPlugin::onDeleteWM(EventArg<Button>) {
  const auto dialog = tabHost.preferences->openDialog(Address::confirmDelete);
  if (!dialog) return;
  connect(*dialog->okSignal(), *this, &EffectPlugin::onOkWMDelete);
  dialog->runModally();
}

void EffectPlugin::onOkWMDelete(SubDialogEventArg&) {
  const auto item = watermark.list ? watermark.list->selectedItem() : SmartPtr<ListItem>();
  if (!item || item->value().view() == noneId) return;
  watermark.store->removeRecord(item->value().view());
  removeWatermarkItem(item->value().view());
  refreshWatermarkList();
  if (watermark.addButton) {
    if (watermark.store->isFull())
      watermark.addButton->disable();
    else if (!watermark.addButton->isEnabled())
      watermark.addButton->enable();
  }
  selectWatermark(noneId);
}

void EffectPlugin::removeWatermarkItem(std::u16string_view id) {
  if (!watermark.list) return;
  const auto items = watermark.list->data();
  for (std::int32_t i = 0; i < items->count(); ++i) {
    if (items->at(i)->value().view() != id) continue;
    items->remove(i);
    return;
  }
}

}  // namespace Kiln::XUL
