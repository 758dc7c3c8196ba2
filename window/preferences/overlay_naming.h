// What the user is told while they name an overlay.
#pragma once

#include "window/dialogs/name_field.h"
#include "window/preferences/session.h"

#include <cstdint>

namespace Window {

// The names of overlays in the tab's list.
QStringList overlaysListed(Session& session);

// For a new overlay: an existing name is allowed, since the plug-in asks whether to replace the overlay.
JudgeName judgeOfNew(Session& session);

// For a new name of the overlay at that index of the list.
JudgeName judgeOfRenamed(Session& session, std::int32_t index);

// Which settings become part of an overlay that is made of a job; empty for none.
QString effectsInOverlay(Session& session);

}  // namespace Window
