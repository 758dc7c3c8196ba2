// Bitmap files (BMP): checks whether a face can show one.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace Refhost {

// The maximum size of a picture file.
inline constexpr std::size_t largestBitmap = std::size_t{16} << 20;

struct BitmapSides {
  int width;
  int height;
};

// The sides in pixels of a bitmap for which isBitmap is true; nothing for other bytes.
std::optional<BitmapSides> bitmapSides(std::string_view bytes);

// Whether the bytes are a complete, uncompressed bitmap of 1 to 32 bits per pixel, in a reasonable size for a dialog.
// Other files are not passed to faces.
bool isBitmap(std::string_view bytes);

}  // namespace Refhost
