// Reads a PNG by the system's library, into 8 bits per colour.
#include "formats/sentences.h"
#include "press/pdf/qpdf.h"
#include "press/pictures/image.h"

#include <png.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace Press {
namespace {

// A limit on the memory for damaged or hostile files: 64 million pixels of at most four bytes.
constexpr std::uint64_t mostPixels = std::uint64_t{64} << 20;

std::string compressed(const std::string& bytes) {
  std::string result;
  Pl_String end("compressed", nullptr, result);
  Pl_Flate flate("samples", &end, Pl_Flate::a_deflate);
  flate.write(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  flate.finish();
  return result;
}

// Ends the reading, also after an exception.
struct PngImage {
  png_image image{};
  PngImage() { image.version = PNG_IMAGE_VERSION; }
  ~PngImage() { png_image_free(&image); }
  PngImage(const PngImage&) = delete;
  PngImage& operator=(const PngImage&) = delete;
};

unsigned fourBytes(std::string_view bytes, std::size_t at) {
  unsigned number = 0;
  for (std::size_t i = 0; i < 4; ++i) number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
  return number;
}

// The resolution, from the chunk in front of the samples that has it.
void readResolution(std::string_view bytes, Image& image) {
  constexpr std::size_t around = 12;  // the length, type and checksum of a chunk
  constexpr double metresPerInch = 0.0254;
  for (std::size_t at = 8; at + around <= bytes.size();) {
    const std::size_t length = fourBytes(bytes, at);
    const std::string_view type = bytes.substr(at + 4, 4);
    if (type == "IDAT" || length > bytes.size() - at - around) return;
    if (type == "pHYs" && length == 9 && bytes[at + 16] == 1) {
      image.across = pointsPerPixel(fourBytes(bytes, at + 8) * metresPerInch);
      image.down = pointsPerPixel(fourBytes(bytes, at + 12) * metresPerInch);
    }
    at += around + length;
  }
}

// Divides pixels of `channels` bytes, of which the last one is the opacity.
void divide(const std::vector<png_byte>& pixels, std::size_t channels, std::string& colours, std::string& opacity) {
  colours.reserve(pixels.size() / channels * (channels - 1));
  opacity.reserve(pixels.size() / channels);
  for (std::size_t at = 0; at < pixels.size(); at += channels) {
    for (std::size_t i = 0; i + 1 < channels; ++i) colours += static_cast<char>(pixels[at + i]);
    opacity += static_cast<char>(pixels[at + channels - 1]);
  }
}

}  // namespace

bool isPng(std::string_view start) { return start.starts_with("\x89PNG\r\n\x1A\n"); }

Image readPng(std::string_view bytes) {
  PngImage png;
  if (png_image_begin_read_from_memory(&png.image, bytes.data(), bytes.size()) == 0)
    throw ImageProblem(Formats::sentence("a damaged PNG file"));
  if (std::uint64_t{png.image.width} * png.image.height > mostPixels)
    throw ImageProblem(Formats::sentence("a PNG file of too many pixels"));
  const bool hasColours = (png.image.format & PNG_FORMAT_FLAG_COLOR) != 0;
  const bool hasOpacity = (png.image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
  png.image.format = (hasColours ? PNG_FORMAT_FLAG_COLOR : 0U) | (hasOpacity ? PNG_FORMAT_FLAG_ALPHA : 0U);
  std::vector<png_byte> pixels(PNG_IMAGE_SIZE(png.image));
  if (png_image_finish_read(&png.image, nullptr, pixels.data(), 0, nullptr) == 0)
    throw ImageProblem(Formats::sentence("a damaged PNG file"));

  Image image{.width = static_cast<int>(png.image.width),
              .height = static_cast<int>(png.image.height),
              .across = pointsPerPixel(0),
              .down = pointsPerPixel(0)};
  readResolution(bytes, image);
  std::string colours, opacity;
  if (hasOpacity)
    divide(pixels, PNG_IMAGE_SAMPLE_CHANNELS(png.image.format), colours, opacity);
  else
    colours.assign(pixels.begin(), pixels.end());
  image.entries = "/ColorSpace " + std::string(hasColours ? "/DeviceRGB" : "/DeviceGray") +
                  " /BitsPerComponent 8 /Filter /FlateDecode ";
  image.data = compressed(colours);
  if (std::ranges::any_of(opacity, [](char each) { return each != '\xFF'; })) image.opacity = compressed(opacity);
  return image;
}

}  // namespace Press
