// Thumbnails as written by drivers.
#pragma once

#include <cstdint>
#include <string>

// A bitmap of that size, 24 bits per pixel, uniformly grey.
inline std::string bitmap(std::uint32_t width, std::uint32_t height) {
  const auto number = [](std::uint32_t value, int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i, value >>= 8) bytes += static_cast<char>(static_cast<unsigned char>(value & 0xFF));
    return bytes;
  };
  const std::uint32_t pixelBytes = (width * 24 + 31) / 32 * 4 * height;
  return "BM" + number(54 + pixelBytes, 4) + number(0, 4) + number(54, 4) + number(40, 4) + number(width, 4) +
         number(height, 4) + number(1, 2) + number(24, 2) + number(0, 4) + number(pixelBytes, 4) + number(0, 16) +
         std::string(pixelBytes, '\x7F');
}
