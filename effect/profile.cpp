// Exports and imports the user's watermarks and overlays with a profile.
#include "effect/effect_plugin.h"

namespace Kiln::XUL {

using namespace Effect;

void EffectPlugin::onExportProfile(ImportExportEventArg event) {
  const auto includeUserdata = event->property(ExportArgument::includeUserdata);
  const auto localData = propertyManager()->configuration()->child(Setting::localDataPath);
  if (!includeUserdata || !includeUserdata->equals(Value::yes) || !localData) return;
  const auto location = host().path(event->location(localData->wideValue()));
  watermark.exportWatermarks(*location);
  overlay.exportOverlays(*location);
}

// Reselects the selected watermark and overlay, to update what depends on the imported files.
void EffectPlugin::onImportProfile(ImportExportEventArg) {
  const auto manager = propertyManager();
  watermark.takeUpWatermarks();
  const auto reselection = manager->transition(Prop::watermarkSel, tabHost.propertyValue(Prop::watermarkSel));
  overlay.takeUpOverlays();
  reselection->add(Prop::overlaySel, tabHost.propertyValue(Prop::overlaySel));
  manager->submit(reselection);
}

}  // namespace Kiln::XUL
