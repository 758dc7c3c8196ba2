// The dialog for several overlays, operated as a user operates it.
#pragma once

#include "app/overlay_slots.h"
#include "host/gui.h"

namespace App {

// Puts these overlays, by the names that people see, into the dialog's slots and accepts it. Throws std::runtime_error,
// one sentence, when the dialog does not take them.
void assignOverlays(Refhost::Dialog& dialog, const OverlaySlots& slots);

}  // namespace App
