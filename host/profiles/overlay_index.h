// The index of overlays as plug-ins keep it in a home and in a profile: records of 154 bytes, a name of up to 64
// UTF-16LE units and a file name of up to 13, each ended by a zero where it is shorter.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

inline constexpr std::u16string_view overlayIndexName = u"ovlNmFl.flo";

// The most units of a name.
inline constexpr std::size_t overlayNameUnits = 64;

struct OverlayEntry {
  std::u16string name;
  std::u16string file;
};

// The complete records; what is left behind the last one is ignored.
std::vector<OverlayEntry> readOverlayIndex(std::string_view bytes);

// What is too long is cut.
std::string overlayIndexBytes(const std::vector<OverlayEntry>& entries);

// The picture beside an overlay file.
std::u16string thumbnailOf(std::u16string_view overlayFile);

}  // namespace Refhost
