// Creating an overlay from the job that is printed.
#include "effect/effect_plugin.h"

namespace Kiln::XUL {

void EffectPlugin::onPrintJobOverlay(ModelSelectionChange&) {}

void EffectPlugin::popupOvlPrintDlg(SmartPtr<GUI>) {}

void EffectPlugin::onPreAccept(SmartPtr<PreAcceptPanel>) {}

}  // namespace Kiln::XUL
