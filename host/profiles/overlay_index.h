// The index of overlays in a home or a profile: records of 154 bytes with a name of up to 64 UTF-16LE units and a file
// name of up to 13, each zero-terminated when shorter.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

inline constexpr std::u16string_view overlayIndexName = u"ovlNmFl.flo";

// The maximum number of units in a name.
inline constexpr std::size_t overlayNameUnits = 64;

struct OverlayEntry {
  std::u16string name;
  std::u16string file;
};

// The complete records; ignores a partial record at the end.
std::vector<OverlayEntry> readOverlayIndex(std::string_view bytes);

// Truncates texts that are too long.
std::string overlayIndexBytes(const std::vector<OverlayEntry>& entries);

// The picture beside an overlay file.
std::u16string thumbnailOf(std::u16string_view overlayFile);

}  // namespace Refhost
