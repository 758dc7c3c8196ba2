// The overlay side of the tab: display and signal handlers. selection.cpp keeps the selection valid, creation.cpp
// creates overlays.
#include "effect/effect_plugin.h"
#include "effect/list_order.h"
#include "effect/option_box.h"
#include "effect/overlay/multi_overlay_dlg.h"
#include "effect/settings.h"
#include "effect/widget_state.h"

namespace Kiln::XUL {

using namespace Effect;

namespace {

// The entries for no overlay and for several stay at the top of the list.
constexpr std::int32_t noneEntry = 0;
constexpr std::int32_t multipleEntry = 1;
constexpr std::int32_t fixedEntries = 2;

}  // namespace

void EffectPlugin::setupOverlay() {
  overlay.store = newOverlays();
  bindOverlayWidgets();
  showOverlays();
  showDownloadedTip();
  if (overlay.list) connect(*overlay.list->changeSignal(), *this, &EffectPlugin::onOvlChange);
  if (overlay.detailsButton) connect(*overlay.detailsButton->clickSignal(), *this, &EffectPlugin::onOvlDetails);
  if (overlay.deleteButton) connect(*overlay.deleteButton->clickSignal(), *this, &EffectPlugin::onOvlDelete);
  if (overlay.layeringBox) connect(*overlay.layeringBox->changeSignal(), *this, &EffectPlugin::onOvlOverlay);
  if (overlay.perPageBox) connect(*overlay.perPageBox->changeSignal(), *this, &EffectPlugin::onOvlPerPage);
  tabHost.send({{Prop::ovlDestCreated, Value::no}});
}

SmartPtr<Overlays> EffectPlugin::newOverlays() {
  SmartPtr<Overlays> store(new (host().allocator()) Overlays(host(), propertyManager(), false));
  if (!store) throw std::bad_alloc();
  return store;
}

Overlays& EffectPlugin::overlays() {
  if (!overlay.store) overlay.store = newOverlays();
  return *overlay.store;
}

void EffectPlugin::bindOverlayWidgets() {
  overlay.list = tabHost.widget<ComboBox>(WidgetId::overlayList);
  overlay.detailsButton = tabHost.widget<Button>(WidgetId::overlayDetails);
  overlay.deleteButton = tabHost.widget<Button>(WidgetId::overlayDelete);
  overlay.layeringBox = tabHost.widget<Toggle>(WidgetId::overlayLayering);
  overlay.perPageBox = tabHost.widget<Toggle>(WidgetId::overlayPerPage);
  overlay.picture = tabHost.widget<ImageBox>(WidgetId::overlayPicture);
  overlay.caption = tabHost.widget<Label>(WidgetId::overlayCaption);
}

void EffectPlugin::showOverlays() {
  if (!overlay.list) return;
  const auto items = host().listData();
  overlay.store->fillList(*items, true, host().image(Address::downloadedIcon, globalScope));
  orderByLabel(*items, fixedEntries);
  overlay.list->setData(items);
}

// The printer's defaults (PDC) belong to no user, so there the tab does not mark user data.
void EffectPlugin::showDownloadedTip() {
  const bool isTold =
      settingFlag(*propertyManager()->configuration(), Setting::userDataSupport) && tabHost.uiMode() == modeDocProp;
  overlay.tip = isTold ? host().image(Address::downloadedIcon, globalScope) : SmartPtr<Image>();
  if (!overlay.tip) return;
  if (overlay.picture) overlay.picture->setImage(overlay.tip);
  if (overlay.caption) overlay.caption->setImage(overlay.tip);
}

// The value of the selected entry; without a list, of the property.
std::u16string EffectPlugin::selectedOverlay() {
  const auto item = overlay.list ? overlay.list->selectedItem() : SmartPtr<ListItem>();
  return item ? item->value().str() : tabHost.propertyValue(Prop::overlaySel).str();
}

void EffectPlugin::onOvlChange(EventArg<ComboBox> event) {
  const auto item = event.source().selectedItem();
  if (!item) return;
  const WString value = item->value();
  if (value.view() == Value::none) {
    tabHost.send({{Prop::overlaySel, value.view()}, {Prop::overlayImage, Value::none}});
  } else if (value.view() == Value::multiple) {
    tabHost.send({{Prop::overlaySel, value.view()}, {Prop::overlayImage, Value::multipleOverlayImage}});
    assignOverlays();
  } else {
    tabHost.send({{Prop::overlaySel, value.view()},
                  {Prop::overlaySourceFileName, overlays().pathOf(value.view(), item->isMarked())},
                  {Prop::overlayImage, Value::overlayImage}});
  }
}

void EffectPlugin::onOvlDetails(EventArg<Button>) {
  assignOverlays();
  if (overlay.list && tabHost.propertyIs(Prop::overlayImage, Value::multipleOverlayImage))
    overlay.list->select(multipleEntry);
}

void EffectPlugin::assignOverlays() {
  MultiOverlayDlg({host(), propertyManager(), overlays()}, *tabHost.preferences).run();
}

void EffectPlugin::onOvlDelete(EventArg<Button>) {
  const auto dialog = tabHost.preferences->openDialog(Address::confirmDelete);
  if (!dialog) return;
  connect(*dialog->okSignal(), *this, &EffectPlugin::onOkOvlDelete);
  dialog->runModally();
}

// The deleted file may have had several entries, and saving merges in the changes of other processes: refill the list.
void EffectPlugin::onOkOvlDelete(SubDialogEventArg&) {
  const auto item = overlay.list ? overlay.list->selectedItem() : SmartPtr<ListItem>();
  overlays().removeOverlay(selectedOverlay(), item && item->isMarked());

  const auto select = [this] {
    showOverlays();
    tabHost.send({{Prop::overlaySel, Value::none}, {Prop::overlayImage, Value::none}});
  };
  // The overlay is deleted even if the index cannot be written.
  try {
    overlay.store->save();
  } catch (const Exception&) {
    select();
    throw;
  }
  select();
}

void EffectPlugin::DisableOvl(ModelEnableChange& change) {
  if (change.property.view() != Prop::overlayImage) return;
  if (overlay.caption) overlay.caption->setEnabled(change.enabled);
  if (change.enabled) {
    enableIfThere(overlay.list);
    updateOvlControls();
    return;
  }
  if (overlay.list) overlay.list->select(noneEntry);
  showOverlayPicture();
  disableIfThere(overlay.list);
  disableIfThere(overlay.detailsButton);
  disableIfThere(overlay.deleteButton);
  clearIfThere(overlay.layeringBox);
  clearIfThere(overlay.perPageBox);
}

void EffectPlugin::updateOvlControls() {
  const std::u16string selected = selectedOverlay();
  if (selected == Value::multiple && !overlay.store) return makeOvlValid();
  if (selected != Value::none) return offerOverlay(selected);
  disableIfThere(overlay.detailsButton);
  disableIfThere(overlay.deleteButton);
  clearIfThere(overlay.layeringBox);
  clearIfThere(overlay.perPageBox);
}

// Several overlays cannot be deleted at once, and can print per page only when a sheet has several pages.
void EffectPlugin::offerOverlay(std::u16string_view value) {
  const bool isMultiple = value == Value::multiple;
  if (isMultiple)
    disableIfThere(overlay.deleteButton);
  else
    enableIfThere(overlay.deleteButton);
  if (overlay.perPageBox) overlay.perPageBox->setEnabled(!isMultiple || !tabHost.propertyIs(Prop::nin1, Value::none));
  enableIfThere(overlay.detailsButton);
  if (overlay.layeringBox) overlay.layeringBox->setEnabled(true);
}

// Shows the thumbnail of the selected overlay, if it can be read.
void EffectPlugin::showOverlayPicture() {
  if (!overlay.picture) return;
  const auto item = overlay.list ? overlay.list->selectedItem() : SmartPtr<ListItem>();
  const std::u16string path = item && overlay.store ? overlay.store->pathOf(item->value().view(), item->isMarked())
                                                    : std::u16string(Value::none);
  overlay.picture->setImage(path == Value::none ? overlay.tip : host().image(thumbnailOf(path), {}));
}

void EffectPlugin::OvlOccuranceSelectionChange(ModelSelectionChange& change) {
  followValue(overlay.perPageBox.get(), change, Value::perPage);
}

void EffectPlugin::OvlLayeringSelectionChange(ModelSelectionChange& change) {
  followValue(overlay.layeringBox.get(), change, Value::overlay);
}

void EffectPlugin::DisableOvlOccurance(ModelEnableChange& change) {
  followAvailability(overlay.perPageBox.get(), change, Value::perPage);
}

// Not connected: the layering box is enabled and disabled with the overlay.
void EffectPlugin::DisableOvlLayering(ModelEnableChange& change) {
  followAvailability(overlay.layeringBox.get(), change, Value::overlay);
}

void EffectPlugin::onOvlOverlay(EventArg<Toggle> event) {
  tabHost.send({{Prop::overlayLayering, event.source().isChecked() ? Value::overlay : Value::underlay}});
}

void EffectPlugin::onOvlPerPage(EventArg<Toggle> event) {
  tabHost.send({{Prop::overlayOccurance, event.source().isChecked() ? Value::perPage : Value::none}});
}

}  // namespace Kiln::XUL
