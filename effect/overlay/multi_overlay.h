// The dialog that assigns several overlays to the pages of a document.
#pragma once

#include "effect/overlay/overlays.h"
#include "kiln/gui.h"

namespace Effect {

// Lets the user assign overlays of the store to pages, and returns when the dialog has closed. What was accepted is in
// the properties then.
void assignOverlays(Kiln::Host& host, Kiln::XUL::GUI& gui, const Kiln::PropertyManager& properties, Overlays& store);

}  // namespace Effect
