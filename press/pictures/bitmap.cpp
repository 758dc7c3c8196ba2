#include "press/pictures/bitmap.h"

namespace Press {
namespace {

void appendNumber(std::string& bytes, std::size_t value, int size) {
  for (; size > 0; --size, value >>= 8) bytes += static_cast<char>(static_cast<unsigned char>(value & 0xFF));
}

}  // namespace

std::string bitmapFile(const Picture& picture) {
  constexpr std::size_t headers = 14 + 40;
  const auto width = static_cast<std::size_t>(picture.width), height = static_cast<std::size_t>(picture.height);
  const std::size_t rowBytes = (3 * width + 3) / 4 * 4;
  std::string bytes = "BM";
  appendNumber(bytes, headers + rowBytes * height, 4);
  appendNumber(bytes, 0, 4);
  appendNumber(bytes, headers, 4);

  appendNumber(bytes, 40, 4);
  appendNumber(bytes, width, 4);
  appendNumber(bytes, height, 4);
  appendNumber(bytes, 1, 2);   // planes
  appendNumber(bytes, 24, 2);  // bits per pixel
  appendNumber(bytes, 0, 4);   // uncompressed
  appendNumber(bytes, rowBytes * height, 4);
  for (int unused = 0; unused < 4; ++unused) appendNumber(bytes, 0, 4);  // resolution and palette

  for (std::size_t row = height; row-- > 0;) {  // bottom-up
    const std::size_t start = bytes.size();
    for (std::size_t column = 0; column < width; ++column)
      appendNumber(bytes, picture.argb[row * width + column] & 0xFFFFFF, 3);  // blue, green, red
    bytes.resize(start + rowBytes);
  }
  return bytes;
}

}  // namespace Press
