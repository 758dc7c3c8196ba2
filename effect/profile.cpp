// What travels with a profile besides property values.
#include "effect/effect_plugin.h"

namespace Kiln::XUL {

void EffectPlugin::onImportProfile(ImportExportEventArg) {}

void EffectPlugin::onExportProfile(ImportExportEventArg) {}

}  // namespace Kiln::XUL
