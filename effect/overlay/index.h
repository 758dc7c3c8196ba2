// The overlay index: an array of fixed-size records of a name and a file name, without header, padding or trailer.
//
//   offset 0    128 bytes  the name, up to 64 UTF-16LE units
//   offset 128   26 bytes  the file name NNNNN.opa, up to 13 UTF-16LE units
//
// A shorter field is padded with NULs. A full one has no NUL.
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

// The complete records in order; ignores a partial record at the end. Accepts any bytes.
std::vector<IndexEntry> readIndex(std::string_view bytes);

// Truncates texts that do not fit, possibly between the units of a surrogate pair.
std::string indexBytes(const std::vector<IndexEntry>& entries);

// The name after a round trip through an index.
std::u16string storableName(std::u16string_view name);

// Whether the name in an index is a file in the index's own folder other than the index itself.
bool isOverlayFileName(std::u16string_view fileName);

// The thumbnail beside an overlay file, given its name or path: replaces the ending by ".bmp".
std::u16string thumbnailOf(std::u16string_view file);

// The file name of a new overlay; `number` is below 100,000.
std::u16string overlayFileName(unsigned number);

// The part after the last separator of a path; both kinds of separators count.
std::u16string_view lastPartOf(std::u16string_view path);

}  // namespace Effect
