// Adding, editing and deleting watermarks: the store first, then the list, then the selection.
#include "effect/effect_plugin.h"
#include "effect/watermark/editor.h"

namespace Kiln::XUL {

using namespace Effect;

void EffectPlugin::onAddWM(EventArg<Button>) {
  const SmartPtr<Watermarks> store = watermark.store;
  const Node edited = store->makeNoneRecord();
  if (!editWatermark(host(), *gui, edited, true)) return;

  const WString name = fieldText(*edited, Field::stylename);
  const std::u16string sameName = store->findIdByName(name.view());
  bool isReplaced = false;
  std::u16string newId;
  store->changeTogether([&] {
    isReplaced = store->removeRecord(sameName);
    newId = store->addRecord(edited);
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
  if (!editWatermark(host(), *gui, edited, false)) return;

  const WString name = fieldText(*edited, Field::stylename);
  const std::u16string sameName = name.view() == oldName.view() ? std::u16string() : store->findIdByName(name.view());
  bool isReplaced = false;
  store->changeTogether([&] {
    isReplaced = store->removeRecord(sameName);
    store->updateRecord(id, edited);
  });
  if (isReplaced) removeWatermarkItem(sameName);
  item->setText(name);
  refreshWatermarkList();
  selectWatermark(id);
}

void EffectPlugin::onDeleteWM(EventArg<Button>) {
  const auto dialog = gui->openDialog(Address::confirmDelete);
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
