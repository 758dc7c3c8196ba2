// What the parts of the dialog for several overlays share.
#pragma once

#include "effect/overlay/overlays.h"
#include "kiln/gui.h"
#include "kiln/host.h"

#include <string_view>

namespace Kiln::XUL {

struct MultiOverlayContext {
  Host& services;
  const Overlays& store;
  SmartPtr<SubDialog> dialog;  // empty when its layout cannot be loaded

  // The dialog's widget with that id and type; empty when the layout has none.
  template <class Kind>
  SmartPtr<Kind> widget(Effect::Name id) const {
    return smartCast<Kind>(dialog->widgetById(id));
  }

  // The bitmap beside the overlay's file; one that says so when there is none.
  SmartPtr<Image> thumbnail(std::u16string_view label, bool isDownloaded) const;
};

}  // namespace Kiln::XUL
