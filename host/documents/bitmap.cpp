#include "host/documents/bitmap.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <optional>

namespace Refhost {
namespace {

constexpr std::size_t fileHeaderBytes = 14;
constexpr std::uint32_t oldestHeaderBytes = 12;
constexpr std::array<std::uint32_t, 6> laterHeaderBytes = {40, 52, 56, 64, 108, 124};
constexpr std::int64_t longestSide = 4096;  // pixels
constexpr std::uint32_t uncompressed = 0;
constexpr std::uint32_t withColourMasks = 3;

// A little-endian number of `count` bytes; 0 past the end.
std::uint32_t numberAt(std::string_view bytes, std::size_t at, std::size_t count) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < count && at + i < bytes.size(); ++i)
    number |= std::uint32_t{static_cast<unsigned char>(bytes[at + i])} << (8 * i);
  return number;
}

struct Header {
  std::uint32_t bytes;
  std::int64_t width;
  std::int64_t height;  // negative for top-down rows
  std::uint32_t bitsPerPixel;
  std::uint32_t compression;
};

std::optional<Header> headerOf(std::string_view file) {
  const std::uint32_t bytes = numberAt(file, fileHeaderBytes, 4);
  const auto field = [file](std::size_t at, std::size_t count) { return numberAt(file, fileHeaderBytes + at, count); };
  if (file.size() < fileHeaderBytes + bytes) return {};
  if (bytes == oldestHeaderBytes) return Header{bytes, field(4, 2), field(6, 2), field(10, 2), uncompressed};
  if (std::find(laterHeaderBytes.begin(), laterHeaderBytes.end(), bytes) == laterHeaderBytes.end()) return {};
  return Header{bytes, static_cast<std::int32_t>(field(4, 4)), static_cast<std::int32_t>(field(8, 4)), field(14, 2),
                field(16, 4)};
}

bool isDepth(std::uint32_t bits) {
  return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
}

}  // namespace

bool isBitmap(std::string_view bytes) { return bitmapSides(bytes).has_value(); }

std::optional<BitmapSides> bitmapSides(std::string_view bytes) {
  if (!bytes.starts_with("BM")) return {};
  const auto header = headerOf(bytes);
  if (!header || !isDepth(header->bitsPerPixel)) return {};
  const bool hasMasks = header->compression == withColourMasks;
  if (header->compression != uncompressed && !(hasMasks && header->bitsPerPixel >= 16)) return {};
  const std::int64_t height = std::abs(header->height);
  if (header->width <= 0 || height == 0 || header->width > longestSide || height > longestSide) return {};

  const std::int64_t rowBytes = (header->width * header->bitsPerPixel + 31) / 32 * 4;
  const std::int64_t pixelsAt = numberAt(bytes, 10, 4);
  const bool isComplete = pixelsAt >= static_cast<std::int64_t>(fileHeaderBytes + header->bytes) &&
                          pixelsAt + rowBytes * height <= static_cast<std::int64_t>(bytes.size());
  if (!isComplete) return {};
  return BitmapSides{static_cast<int>(header->width), static_cast<int>(height)};
}

}  // namespace Refhost
