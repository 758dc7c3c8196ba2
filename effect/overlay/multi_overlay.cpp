#include "effect/overlay/multi_overlay.h"

#include "effect/overlay/multi_overlay_dlg.h"

namespace Effect {

void assignOverlays(Kiln::Host& host, Kiln::XUL::GUI& gui, const Kiln::PropertyManager& properties, Overlays& store) {
  Kiln::XUL::MultiOverlayDlg({host, properties, store}, gui).run();
}

}  // namespace Effect
