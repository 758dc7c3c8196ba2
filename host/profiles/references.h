// The properties that name a person's watermarks and overlays.
#pragma once

#include "host/profiles/merge.h"
#include "host/trace.h"

namespace Refhost {

// Makes values that a profile brings name what the home has: watermarks by their ids, overlays by the names of their
// files, which lie in `overlayFolder`.
void rename(TracePairs& values, const Renamed& watermarks, const Renamed& overlays,
            const std::filesystem::path& overlayFolder);

}  // namespace Refhost
