// The properties that refer to the user's watermarks and overlays.
#pragma once

#include "host/profiles/merge.h"
#include "host/trace.h"

namespace Refhost {

// Rewrites a profile's values to refer to the home's content: watermarks by id, overlays by file name in
// `overlayFolder`.
void rename(TracePairs& values, const Renamed& watermarks, const Renamed& overlays,
            const std::filesystem::path& overlayFolder);

}  // namespace Refhost
