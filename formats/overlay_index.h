// The overlay index: an array of fixed-size records of a name and a file name, without header, padding or trailer.
//
//   offset 0    128 bytes  the name, up to 64 UTF-16LE units
//   offset 128   26 bytes  the file name NNNNN.opa, up to 13 UTF-16LE units
//
// A shorter field is padded with NULs. A full one has no NUL.
#pragma once

#include "formats/letter_case.h"
#include "formats/names.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace Formats {

// The maximum numbers of UTF-16 units.
inline constexpr std::size_t overlayNameUnits = 64;
inline constexpr std::size_t overlayFileNameUnits = 13;

inline constexpr std::size_t indexRecordBytes = 2 * (overlayNameUnits + overlayFileNameUnits);

struct IndexEntry {
  std::u16string name;
  std::u16string fileName;

  friend bool operator==(const IndexEntry&, const IndexEntry&) = default;
};

// The text of a field, from its first byte on.
inline std::u16string readIndexField(std::string_view bytes, std::size_t units) {
  std::u16string text;
  for (std::size_t i = 0; i < units; ++i) {
    const auto low = static_cast<unsigned char>(bytes[2 * i]);
    const auto high = static_cast<unsigned char>(bytes[2 * i + 1]);
    if (low == 0 && high == 0) break;
    text += static_cast<char16_t>(low | high << 8);
  }
  return text;
}

inline void appendIndexField(std::string& bytes, std::u16string_view text, std::size_t units) {
  for (std::size_t i = 0; i < units; ++i) {
    const unsigned unit = i < text.size() ? text[i] : 0U;
    bytes += static_cast<char>(static_cast<unsigned char>(unit & 0xFF));
    bytes += static_cast<char>(static_cast<unsigned char>(unit >> 8));
  }
}

// The complete records in order; ignores a partial record at the end. Accepts any bytes.
inline std::vector<IndexEntry> readIndex(std::string_view bytes) {
  std::vector<IndexEntry> entries;
  entries.reserve(bytes.size() / indexRecordBytes);
  for (; bytes.size() >= indexRecordBytes; bytes.remove_prefix(indexRecordBytes))
    entries.push_back({readIndexField(bytes, overlayNameUnits),
                       readIndexField(bytes.substr(2 * overlayNameUnits), overlayFileNameUnits)});
  return entries;
}

// Truncates texts that do not fit, possibly between the units of a surrogate pair.
inline std::string indexBytes(const std::vector<IndexEntry>& entries) {
  std::string bytes;
  bytes.reserve(entries.size() * indexRecordBytes);
  for (const IndexEntry& entry : entries) {
    appendIndexField(bytes, entry.name, overlayNameUnits);
    appendIndexField(bytes, entry.fileName, overlayFileNameUnits);
  }
  return bytes;
}

// The name after a round trip through an index.
inline std::u16string storableName(std::u16string_view name) {
  return std::u16string(name.substr(0, std::min(name.find(u'\0'), overlayNameUnits)));
}

// Whether the name in an index is a file in the index's own folder other than the index itself. The colon separates a
// drive or a file stream from the rest.
inline bool isOverlayFileName(std::u16string_view fileName) {
  return !fileName.empty() && fileName != u"." && fileName != u".." &&
         fileName.find_first_of(u"/\\:") == fileName.npos && !isSameWithoutCase(fileName, overlayIndexName);
}

// The part after the last separator of a path; both kinds of separators count.
inline std::u16string_view lastPartOf(std::u16string_view path) { return path.substr(path.find_last_of(u"/\\") + 1); }

// The thumbnail beside an overlay file, given its name or path: replaces the ending by ".bmp".
inline std::u16string thumbnailOf(std::u16string_view file) {
  const std::u16string_view name = lastPartOf(file);
  const std::size_t ending = name.size() - std::min(name.rfind(u'.'), name.size());
  return std::u16string(file.substr(0, file.size() - ending)) + u".bmp";
}

// The ending of every overlay file.
inline constexpr std::u16string_view overlayEnding = u".opa";

// New overlays have the file names 00000.opa to 99999.opa.
inline constexpr unsigned overlayFileNumbers = 100'000;

// The file name of a new overlay; `number` is below overlayFileNumbers.
inline std::u16string overlayFileName(unsigned number) {
  char text[16];
  std::snprintf(text, sizeof text, "%05u.opa", number);
  return {text, std::find(text, std::end(text), '\0')};
}

}  // namespace Formats
