// Bitmap files (BMP), as far as to tell whether a face can show one.
#pragma once

#include <cstddef>
#include <string_view>

namespace Refhost {

// The largest file that is taken for a picture.
inline constexpr std::size_t largestBitmap = std::size_t{16} << 20;

// Whether the bytes are a whole bitmap of a size that makes sense for a picture in a dialog: uncompressed, of 1 to 32
// bits a pixel, with all its pixels. Whatever else they are, a face is not given it.
bool isBitmap(std::string_view bytes);

}  // namespace Refhost
