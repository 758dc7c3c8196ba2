// The overlay side of the tab.
#include "effect/effect_plugin.h"
#include "effect/option_box.h"

namespace Kiln::XUL {

using namespace Effect;

void EffectPlugin::setupOverlay() {
  overlay.layeringBox = widget<Toggle>(WidgetId::overlayLayering);
  overlay.perPageBox = widget<Toggle>(WidgetId::overlayPerPage);
  if (overlay.layeringBox) connect(*overlay.layeringBox->changeSignal(), *this, &EffectPlugin::onOvlOverlay);
  if (overlay.perPageBox) connect(*overlay.perPageBox->changeSignal(), *this, &EffectPlugin::onOvlPerPage);
}

void EffectPlugin::OvlSelectionChange(ModelSelectionChange&) {}

void EffectPlugin::DisableOvl(ModelEnableChange&) {}

void EffectPlugin::OvlOccuranceSelectionChange(ModelSelectionChange& change) {
  followValue(overlay.perPageBox.get(), change, Value::perPage);
}

void EffectPlugin::OvlLayeringSelectionChange(ModelSelectionChange& change) {
  followValue(overlay.layeringBox.get(), change, Value::overlay);
}

void EffectPlugin::DisableOvlOccurance(ModelEnableChange& change) {
  followAvailability(overlay.perPageBox.get(), change, Value::perPage);
}

// Not connected: the layering box's availability goes with the overlay's.
void EffectPlugin::DisableOvlLayering(ModelEnableChange& change) {
  followAvailability(overlay.layeringBox.get(), change, Value::overlay);
}

void EffectPlugin::onOvlOverlay(EventArg<Toggle> event) {
  send({{Prop::overlayLayering, event.source().isChecked() ? Value::overlay : Value::underlay}});
}

void EffectPlugin::onOvlPerPage(EventArg<Toggle> event) {
  send({{Prop::overlayOccurance, event.source().isChecked() ? Value::perPage : Value::none}});
}

}  // namespace Kiln::XUL
