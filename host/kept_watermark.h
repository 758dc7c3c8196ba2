// What a chosen watermark prints, kept when the preferences are reopened in another language.
#pragma once

#include "host/preferences.h"

namespace Refhost {

// A plug-in writes the text of a built-in watermark, and the face of one that names none, in the language that it opens
// in. Sets both as in `former`, the values before, of which the last counts and defaults may be missing, so that the
// language of a window does not change what prints; they last until the user chooses a watermark. Does nothing when
// another one is chosen than before.
void keepWatermarkText(Preferences& preferences, const TracePairs& former);

}  // namespace Refhost
