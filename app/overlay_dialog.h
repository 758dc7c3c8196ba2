// Operates the dialog for several overlays like a user.
#pragma once

#include "app/overlay_slots.h"
#include "host/gui.h"

namespace App {

// Sets the dialog's slots to these overlays, by display names, and accepts it. Throws std::runtime_error, one sentence,
// when the dialog rejects them.
void assignOverlays(Refhost::Dialog& dialog, const OverlaySlots& slots);

}  // namespace App
