#include "effect/watermark/tab.h"

#include "effect/list_order.h"
#include "effect/option_box.h"
#include "effect/settings.h"
#include "effect/user_store.h"
#include "effect/watermark/print_details.h"
#include "effect/widget_state.h"

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The none entry stays at the top of the list.
constexpr std::int32_t fixedEntries = 1;

}  // namespace

WatermarkTab::WatermarkTab(const TabHost& lender)
    : host(lender),
      leftBox(lender.services.alignment(Alignment::shareColumns)) {}

void WatermarkTab::setupWM() {
  store = newStore<Watermarks>(host, false);
  bindWidgets();
  showWatermarks();
  if (list) connect(*list->changeSignal(), *this, &WatermarkTab::onWMChange);
  if (addButton) connect(*addButton->clickSignal(), *this, &WatermarkTab::onAddWM);
  if (editButton) connect(*editButton->clickSignal(), *this, &WatermarkTab::onEditWM);
  if (deleteButton) connect(*deleteButton->clickSignal(), *this, &WatermarkTab::onDeleteWM);
  if (firstPageBox) connect(*firstPageBox->changeSignal(), *this, &WatermarkTab::onWMFirstPage);
  if (perPageBox) connect(*perPageBox->changeSignal(), *this, &WatermarkTab::onWMPerPage);
  if (store->isFull()) disableIfThere(addButton);
}

// The store, opened anew after an import without memory for it; the list then shows what it holds. Throws
// std::bad_alloc.
SmartPtr<Watermarks> WatermarkTab::openedStore() {
  if (store) return store;
  store = newStore<Watermarks>(host, false);
  showWatermarks();
  showCurrent();
  return store;
}

void WatermarkTab::bindWidgets() {
  list = host.widget<ListBox>(WidgetId::watermarkList);
  addButton = host.widget<Button>(WidgetId::watermarkAdd);
  editButton = host.widget<Button>(WidgetId::watermarkEdit);
  deleteButton = host.widget<Button>(WidgetId::watermarkDelete);
  firstPageBox = host.widget<Toggle>(WidgetId::watermarkFirstPage);
  perPageBox = host.widget<Toggle>(WidgetId::watermarkPerPage);
  caption = host.preferences->widgetById(WidgetId::watermarkCaption);
}

void WatermarkTab::showWatermarks() {
  if (!list) return;
  const auto items = host.services.listData();
  store->fillList(*items, host.services.image(Address::downloadedIcon, globalScope));
  orderByLabel(*items, fixedEntries);
  list->setData(items);
}

// Sorts and shows the current items.
void WatermarkTab::refreshList() {
  if (!list) return;
  const auto items = list->data();
  orderByLabel(*items, fixedEntries);
  list->setData(items);
}

void WatermarkTab::onWMChange(EventArg<ListBox> event) {
  if (const auto item = event.source().selectedItem()) selectWatermark(item->value().view());
}

// Selecting none turns the watermark off.
void WatermarkTab::selectWatermark(std::u16string_view id) {
  host.send({{Prop::watermarkSel, id}, {Prop::watermark, id == noneId ? Value::none : Value::watermark}});
}

void WatermarkTab::WMSelectionChange(ModelSelectionChange& change) {
  const bool isLocked = host.isLocked(Prop::watermarkSel);
  // At print time the files may have changed since they were read.
  if (host.uiMode() == modePrePrint)
    store = newStore<Watermarks>(host, false);
  else
    openedStore();

  const std::u16string id = knownWatermark(change.value.view());
  showSelection(id);
  const Node record = store->record(id);
  if (!record) return store->checkComplete();
  writePrintDetails(host.services, *host.properties->modelProperties(), *record, id == noneId);
  if (editButton && deleteButton && perPageBox && !isLocked) {
    const bool isAny = id != noneId;
    editButton->setEnabled(isAny);
    deleteButton->setEnabled(isAny);
    perPageBox->setEnabled(isAny);
  }
  if (id == noneId) host.send({{Prop::watermark, Value::none}});
}

// A watermark that the list does not show leaves no entry selected, so that none is taken for it.
void WatermarkTab::showSelection(std::u16string_view id) {
  if (list && !list->selectValue(id)) list->select(-1);
}

void WatermarkTab::showCurrent() { showSelection(knownWatermark(host.propertyValue(Prop::watermarkSel).view())); }

// The record's id, else its downloaded form, else none. An unknown one stays as it is when a file could not be read,
// since it may be in that file.
std::u16string WatermarkTab::knownWatermark(std::u16string_view id) const {
  if (store->record(id)) return std::u16string(id);
  const bool marksDownloaded = settingFlag(*host.properties->configuration(), Setting::userDataSupport);
  std::u16string downloadedId = std::u16string(id) + std::u16string(downloadedEnding);
  if (marksDownloaded && store->record(downloadedId)) return downloadedId;
  return std::u16string(store->isComplete() ? noneId : id);
}

void WatermarkTab::DisableWM(ModelEnableChange& change) {
  if (host.isLocked(Prop::watermarkSel)) {
    // The user cannot change the selection, only see it.
    openedStore();
    showCurrent();
    disableIfThere(addButton);
    disableIfThere(editButton);
    disableIfThere(deleteButton);
  } else if (change.enabled) {
    offerWatermarks();
  } else {
    withdrawWatermarks();
  }
}

void WatermarkTab::offerWatermarks() {
  enableIfThere(list);
  enableIfThere(caption);
  if (host.propertyIs(Prop::watermarkSel, noneId)) {
    disableIfThere(editButton);
    disableIfThere(deleteButton);
    host.send({{Prop::watermark, Value::none}, {Prop::watermarkSel, noneId}});
  } else {
    enableIfThere(editButton);
    enableIfThere(deleteButton);
  }
  if (!openedStore()->isFull()) enableIfThere(addButton);
}

void WatermarkTab::withdrawWatermarks() {
  if (list) list->select(0);
  disableIfThere(list);
  disableIfThere(caption);
  disableIfThere(addButton);
  disableIfThere(editButton);
  disableIfThere(deleteButton);
  host.send({{Prop::watermark, Value::none}, {Prop::watermarkSel, noneId}});
}

void WatermarkTab::FirstPageSelectionChange(ModelSelectionChange& change) {
  followValue(firstPageBox.get(), change, Value::yes);
}

void WatermarkTab::WMOccuranceSelectionChange(ModelSelectionChange& change) {
  followValue(perPageBox.get(), change, Value::perPage);
}

void WatermarkTab::DisableWMFirstPageOnly(ModelEnableChange& change) {
  followAvailability(firstPageBox.get(), change, Value::yes);
}

void WatermarkTab::DisableWMOccurance(ModelEnableChange& change) {
  followAvailability(perPageBox.get(), change, Value::perPage);
}

void WatermarkTab::onWMFirstPage(EventArg<Toggle> event) {
  host.send({{Prop::firstPageOnly, event.source().isChecked() ? Value::yes : Value::no}});
}

void WatermarkTab::onWMPerPage(EventArg<Toggle> event) {
  host.send({{Prop::watermarkOccurance, event.source().isChecked() ? Value::perPage : Value::none}});
}

void WatermarkTab::exportWatermarks(Services::Path& folder) const {
  storeToExport(host, store)->exportMerged(folder.join(watermarkFileName));
}

void WatermarkTab::takeUpWatermarks() {
  store = openStore<Watermarks>(host, false);
  if (!store) return;
  showWatermarks();
  showCurrent();
  if (!addButton) return;
  if (store->isFull())
    addButton->disable();
  else
    addButton->enable();
}

}  // namespace Kiln::XUL
