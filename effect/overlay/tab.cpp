#include "effect/overlay/tab.h"

#include "effect/list_order.h"
#include "effect/option_box.h"
#include "effect/overlay/multi_overlay_dlg.h"
#include "effect/settings.h"
#include "effect/user_store.h"
#include "effect/widget_state.h"

#include <utility>

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The entries for no overlay and for several stay at the top of the list.
constexpr std::int32_t noneEntry = 0;
constexpr std::int32_t multipleEntry = 1;
constexpr std::int32_t fixedEntries = 2;

}  // namespace

OverlayTab::OverlayTab(const TabHost& lender)
    : host(lender),
      leftBox(lender.services.alignment(Alignment::shareColumns)) {}

void OverlayTab::setupOverlay() {
  store = newStore<Overlays>(host, false);
  bindWidgets();
  showOverlays();
  showDownloadedTip();
  if (list) connect(*list->changeSignal(), *this, &OverlayTab::onOvlChange);
  if (detailsButton) connect(*detailsButton->clickSignal(), *this, &OverlayTab::onOvlDetails);
  if (deleteButton) connect(*deleteButton->clickSignal(), *this, &OverlayTab::onOvlDelete);
  if (layeringBox) connect(*layeringBox->changeSignal(), *this, &OverlayTab::onOvlOverlay);
  if (perPageBox) connect(*perPageBox->changeSignal(), *this, &OverlayTab::onOvlPerPage);
  host.send({{Prop::ovlDestCreated, Value::no}});
}

SmartPtr<Overlays> OverlayTab::openedStore() {
  if (!store) store = newStore<Overlays>(host, false);
  return store;
}

void OverlayTab::bindWidgets() {
  list = host.widget<ComboBox>(WidgetId::overlayList);
  detailsButton = host.widget<Button>(WidgetId::overlayDetails);
  deleteButton = host.widget<Button>(WidgetId::overlayDelete);
  layeringBox = host.widget<Toggle>(WidgetId::overlayLayering);
  perPageBox = host.widget<Toggle>(WidgetId::overlayPerPage);
  picture = host.widget<ImageBox>(WidgetId::overlayPicture);
  caption = host.widget<Label>(WidgetId::overlayCaption);
}

void OverlayTab::showOverlays() {
  if (!list) return;
  const auto items = host.services.listData();
  store->fillList(*items, true, host.services.image(Address::downloadedIcon, globalScope));
  orderByLabel(*items, fixedEntries);
  list->setData(items);
}

// The printer's defaults (PDC) belong to no user, so there the tab does not mark user data.
void OverlayTab::showDownloadedTip() {
  const bool isTold =
      settingFlag(*host.properties->configuration(), Setting::userDataSupport) && host.uiMode() == modeDocProp;
  tip = isTold ? host.services.image(Address::downloadedIcon, globalScope) : SmartPtr<Image>();
  if (!tip) return;
  if (picture) picture->setImage(tip);
  if (caption) caption->setImage(tip);
}

void OverlayTab::onOvlChange(EventArg<ComboBox> event) {
  const auto item = event.source().selectedItem();
  if (!item) return;
  const WString value = item->value();
  if (value.view() == Value::none) {
    host.send({{Prop::overlaySel, value.view()}, {Prop::overlayImage, Value::none}});
  } else if (value.view() == Value::multiple) {
    host.send({{Prop::overlaySel, value.view()}, {Prop::overlayImage, Value::multipleOverlayImage}});
    assignOverlays();
  } else {
    host.send({{Prop::overlaySel, value.view()},
               {Prop::overlaySourceFileName, overlays().pathOf(idOf(*item))},
               {Prop::overlayImage, Value::overlayImage}});
  }
}

void OverlayTab::onOvlDetails(EventArg<Button>) {
  assignOverlays();
  if (list && host.propertyIs(Prop::overlayImage, Value::multipleOverlayImage)) list->select(multipleEntry);
}

void OverlayTab::assignOverlays() {
  MultiOverlayDlg({host.services, host.properties, openedStore()}, *host.preferences).run();
}

void OverlayTab::onOvlDelete(EventArg<Button>) {
  const auto dialog = host.preferences->openDialog(Address::confirmDelete);
  if (!dialog) return;
  const OverlayId outer = std::exchange(asked, selectedRecord());
  if (const auto hint = smartCast<Label>(dialog->widgetById(WidgetId::otherForm)))
    hint->setVisible(overlays().hasOtherForm(asked));
  connect(*dialog->okSignal(), *this, &OverlayTab::onOkOvlDelete);
  dialog->runModally();
  asked = outer;
}

// While the question is open, an import may have changed the selection. Another overlay may take the deleted one's
// place, and saving merges in the changes of other processes: refill the list.
void OverlayTab::onOkOvlDelete(SubDialogEventArg&) {
  overlays().removeOverlay(asked);

  const auto select = [this] {
    showOverlays();
    host.send({{Prop::overlaySel, Value::none}, {Prop::overlayImage, Value::none}});
  };
  // The overlay is deleted even if the index cannot be written.
  try {
    store->save();
  } catch (const Exception&) {
    select();
    throw;
  }
  select();
}

void OverlayTab::DisableOvl(ModelEnableChange& change) {
  if (change.property.view() != Prop::overlayImage) return;
  if (caption) caption->setEnabled(change.enabled);
  if (change.enabled) {
    enableIfThere(list);
    updateOvlControls();
    return;
  }
  if (list) list->select(noneEntry);
  showOverlayPicture();
  disableIfThere(list);
  disableIfThere(detailsButton);
  disableIfThere(deleteButton);
  clearIfThere(layeringBox);
  clearIfThere(perPageBox);
}

void OverlayTab::updateOvlControls() {
  const std::u16string selected = selectedOverlay();
  if (selected == Value::multiple && !store) return makeOvlValid();
  if (selected != Value::none) return offerOverlay(selected);
  disableIfThere(detailsButton);
  disableIfThere(deleteButton);
  clearIfThere(layeringBox);
  clearIfThere(perPageBox);
}

// Several overlays cannot be deleted at once, and can print per page only when a sheet has several pages.
void OverlayTab::offerOverlay(std::u16string_view value) {
  const bool isMultiple = value == Value::multiple;
  if (isMultiple)
    disableIfThere(deleteButton);
  else
    enableIfThere(deleteButton);
  if (perPageBox) perPageBox->setEnabled(!isMultiple || !host.propertyIs(Prop::nin1, Value::none));
  enableIfThere(detailsButton);
  if (layeringBox) layeringBox->setEnabled(true);
}

// Shows the thumbnail of the selected overlay, if it can be read.
void OverlayTab::showOverlayPicture() {
  if (!picture) return;
  const auto item = selectedItem();
  const std::u16string path = item && store ? store->pathOf(idOf(*item)) : std::u16string(Value::none);
  picture->setImage(path == Value::none ? tip : host.services.image(thumbnailOf(path), {}));
}

void OverlayTab::OvlOccuranceSelectionChange(ModelSelectionChange& change) {
  followValue(perPageBox.get(), change, Value::perPage);
}

void OverlayTab::OvlLayeringSelectionChange(ModelSelectionChange& change) {
  followValue(layeringBox.get(), change, Value::overlay);
}

void OverlayTab::DisableOvlOccurance(ModelEnableChange& change) {
  followAvailability(perPageBox.get(), change, Value::perPage);
}

// Not connected: the layering box is enabled and disabled with the overlay.
void OverlayTab::DisableOvlLayering(ModelEnableChange& change) {
  followAvailability(layeringBox.get(), change, Value::overlay);
}

void OverlayTab::onOvlOverlay(EventArg<Toggle> event) {
  host.send({{Prop::overlayLayering, event.source().isChecked() ? Value::overlay : Value::underlay}});
}

void OverlayTab::onOvlPerPage(EventArg<Toggle> event) {
  host.send({{Prop::overlayOccurance, event.source().isChecked() ? Value::perPage : Value::none}});
}

void OverlayTab::exportOverlays(Services::Path& location) const {
  const auto folder = location.join(settingText(*host.properties->configuration(), Setting::settingsFolder));
  const auto exported = storeToExport(host, store);
  folder->createFolder();
  exported->exportTo(folder);
}

void OverlayTab::takeUpOverlays() {
  store = openStore<Overlays>(host, false);
  if (store) {
    showOverlays();
    selectOverlayItem(host.propertyValue(Prop::overlaySel).view(),
                      host.propertyValue(Prop::overlaySourceFileName).view());
  }
  updateOvlControls();
}

}  // namespace Kiln::XUL
