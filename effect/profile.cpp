// Exports and imports the user's watermarks and overlays with a profile.
#include "effect/effect_plugin.h"
#include "effect/settings.h"

#include <new>

namespace Kiln::XUL {

using namespace Effect;

namespace {

// Empty when out of memory.
template <class Store>
SmartPtr<Store> open(Host& host, const PropertyManager& properties, bool isMerged) {
  return SmartPtr<Store>(new (host.allocator()) Store(host, properties, isMerged));
}

// The store to export: the present one if merged, else a new merged one over the same files. Never empty: a profile
// without the user's data must not look complete.
template <class Store>
SmartPtr<Store> merged(const SmartPtr<Store>& present, Host& host, const PropertyManager& properties) {
  if (present && present->isMerged()) return present;
  if (present) present->save();
  const auto fresh = open<Store>(host, properties, true);
  if (!fresh) throw std::bad_alloc();
  return fresh;
}

}  // namespace

void EffectPlugin::onExportProfile(ImportExportEventArg event) {
  const auto includeUserdata = event->property(Prop::includeUserdata);
  const auto localData = propertyManager()->configuration()->child(Setting::localDataPath);
  if (!includeUserdata || !includeUserdata->equals(Value::yes) || !localData) return;
  const auto location = host().path(event->location(localData->wideValue()));
  exportWatermarks(*location);
  exportOverlays(*location);
}

void EffectPlugin::exportWatermarks(Services::Path& location) {
  merged(watermark.store, host(), propertyManager())->exportMerged(location.join(watermarkFileName));
}

void EffectPlugin::exportOverlays(Services::Path& location) {
  const auto folder = location.join(settingText(*propertyManager()->configuration(), Setting::settingsFolder));
  const auto store = merged(overlay.store, host(), propertyManager());
  folder->createFolder();
  store->exportTo(folder);
}

// Reselects the selected watermark and overlay, to update what depends on the imported files.
void EffectPlugin::onImportProfile(ImportExportEventArg) {
  const auto manager = propertyManager();
  takeUpWatermarks();
  const auto reselection = manager->transition(Prop::watermarkSel, tabHost.propertyValue(Prop::watermarkSel));
  takeUpOverlays();
  reselection->add(Prop::overlaySel, tabHost.propertyValue(Prop::overlaySel));
  manager->submit(reselection);
}

void EffectPlugin::takeUpWatermarks() {
  watermark.store = open<Watermarks>(host(), propertyManager(), false);
  if (!watermark.store) return;
  showWatermarks();
  if (watermark.list) watermark.list->selectValue(tabHost.propertyValue(Prop::watermarkSel));
  if (!watermark.addButton) return;
  if (watermark.store->isFull())
    watermark.addButton->disable();
  else
    watermark.addButton->enable();
}

void EffectPlugin::takeUpOverlays() {
  overlay.store = open<Overlays>(host(), propertyManager(), false);
  if (overlay.store) {
    showOverlays();
    selectOverlayItem(tabHost.propertyValue(Prop::overlaySel).view(),
                      tabHost.propertyValue(Prop::overlaySourceFileName).view());
  }
  updateOvlControls();
}

}  // namespace Kiln::XUL
