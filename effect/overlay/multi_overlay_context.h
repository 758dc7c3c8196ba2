// What the parts of the dialog for several overlays share.
#pragma once

#include "effect/overlay/overlays.h"
#include "kiln/gui.h"
#include "kiln/host.h"

namespace Kiln::XUL {

struct MultiOverlayContext {
  Host& services;
  SmartPtr<Overlays> store;    // held, since an import may replace the tab's store while the dialog is open
  SmartPtr<SubDialog> dialog;  // empty when its layout cannot be loaded

  // The dialog's widget with that id and type; empty when the layout has none.
  template <class Kind>
  SmartPtr<Kind> widget(Effect::Name id) const {
    return smartCast<Kind>(dialog->widgetById(id));
  }

  // The bitmap beside the overlay's file; one that says so when there is none.
  SmartPtr<Image> thumbnail(const Effect::OverlayId& overlay) const;
};

}  // namespace Kiln::XUL
