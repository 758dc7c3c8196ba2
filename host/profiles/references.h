// The properties that refer to the user's watermarks and overlays.
#pragma once

#include "host/profiles/merge.h"
#include "host/trace.h"

#include <functional>

namespace Refhost {

// The overlays that the values of a profile may name.
struct NamedOverlays {
  // From file names in the profile to those in the home.
  const Renamed& fromProfile;

  // The folder of the home's overlays, and whether a file is there.
  const std::filesystem::path& folder;
  std::function<bool(std::u16string_view fileName)> isInFolder;
};

// Rewrites a profile's values to refer to the home's content: watermarks by id, overlays by file name in the folder.
// A path that names no overlay of the profile or the home is taken out, since a profile may come from anybody and could
// have any file printed. Returns these paths.
std::vector<std::u16string> rename(TracePairs& values, const Renamed& watermarks, const NamedOverlays& overlays);

}  // namespace Refhost
