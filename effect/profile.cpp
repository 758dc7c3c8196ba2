// Exports and imports the user's watermarks and overlays with a profile.
#include "effect/effect_plugin.h"
#include "effect/settings.h"
#include "effect/user_store.h"

namespace Kiln::XUL {

using namespace Effect;

void EffectPlugin::onExportProfile(ImportExportEventArg event) {
  const auto includeUserdata = event->property(Prop::includeUserdata);
  const auto localData = propertyManager()->configuration()->child(Setting::localDataPath);
  if (!includeUserdata || !includeUserdata->equals(Value::yes) || !localData) return;
  const auto location = host().path(event->location(localData->wideValue()));
  watermark.exportWatermarks(*location);
  exportOverlays(*location);
}

void EffectPlugin::exportOverlays(Services::Path& location) {
  const auto folder = location.join(settingText(*propertyManager()->configuration(), Setting::settingsFolder));
  const auto store = storeToExport(tabHost, overlay.store);
  folder->createFolder();
  store->exportTo(folder);
}

// Reselects the selected watermark and overlay, to update what depends on the imported files.
void EffectPlugin::onImportProfile(ImportExportEventArg) {
  const auto manager = propertyManager();
  watermark.takeUpWatermarks();
  const auto reselection = manager->transition(Prop::watermarkSel, tabHost.propertyValue(Prop::watermarkSel));
  takeUpOverlays();
  reselection->add(Prop::overlaySel, tabHost.propertyValue(Prop::overlaySel));
  manager->submit(reselection);
}

void EffectPlugin::takeUpOverlays() {
  overlay.store = openStore<Overlays>(tabHost, false);
  if (overlay.store) {
    showOverlays();
    selectOverlayItem(tabHost.propertyValue(Prop::overlaySel).view(),
                      tabHost.propertyValue(Prop::overlaySourceFileName).view());
  }
  updateOvlControls();
}

}  // namespace Kiln::XUL
