// The overlay index: fixed records of a name and a file name, nothing before, between or behind them.
//
//   offset 0    128 bytes  the name, up to 64 UTF-16LE units
//   offset 128   26 bytes  the file name, up to 13 UTF-16LE units: NNNNN.opa and room to spare
//
// A field that is not full ends at its first NUL, and the rest of it is zero. A full one has no NUL.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Effect {

inline constexpr std::size_t indexRecordBytes = 154;

struct IndexEntry {
  std::u16string name;
  std::u16string fileName;

  friend bool operator==(const IndexEntry&, const IndexEntry&) = default;
};

// The complete records in order; what is left behind the last one is ignored. Any bytes are an index.
std::vector<IndexEntry> readIndex(std::string_view bytes);

// What does not fit into a field is cut, also between the two units of a character.
std::string indexBytes(const std::vector<IndexEntry>& entries);

// The name as it comes back from an index.
std::u16string storableName(std::u16string_view name);

// Whether a name in an index stands for a file in the index's own folder, and not for the index itself.
bool isOverlayFileName(std::u16string_view fileName);

// The thumbnail that lies beside an overlay file, by its name or its path: ".bmp" takes the place of the ending.
std::u16string thumbnailOf(std::u16string_view file);

// The name of a new overlay file, by a number below 100,000.
std::u16string overlayFileName(unsigned number);

// What follows the last separator of a path, whichever system wrote it.
std::u16string_view lastPartOf(std::u16string_view path);

}  // namespace Effect
