// Reads what a PDF must know of a JPEG: its size, colours, resolution and orientation.
#include "formats/sentences.h"
#include "press/pictures/image.h"

#include <optional>

namespace Press {
namespace {

// Bytes of a file. Those after its end are zero.
class Bytes {
 public:
  explicit Bytes(std::string_view text, bool isLittleEndian = false) : bytes(text), littleEndian(isLittleEndian) {}

  unsigned byte(std::size_t at) const { return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0; }
  unsigned two(std::size_t at) const {
    return littleEndian ? byte(at) | byte(at + 1) << 8 : byte(at) << 8 | byte(at + 1);
  }
  unsigned four(std::size_t at) const {
    return littleEndian ? two(at) | two(at + 2) << 16 : two(at) << 16 | two(at + 2);
  }

 private:
  std::string_view bytes;
  bool littleEndian;
};

constexpr unsigned startOfScan = 0xDA;
constexpr unsigned endOfImage = 0xD9;

// Markers without a length.
bool standsAlone(unsigned marker) { return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8); }

bool startsFrame(unsigned marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// The orientation in the TIFF structure of an EXIF segment; 1 when it has none.
int orientationIn(std::string_view tiff) {
  constexpr unsigned orientationTag = 0x0112;
  constexpr std::size_t entrySize = 12;
  const Bytes bytes(tiff, tiff.starts_with("II"));
  const std::size_t directory = bytes.four(4);
  const unsigned count = bytes.two(directory);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = directory + 2 + i * entrySize;
    if (bytes.two(entry) != orientationTag) continue;
    const unsigned value = bytes.two(entry + 8);
    return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
  }
  return 1;
}

class JpegReader {
 public:
  Image read(std::string bytes) {
    for (std::size_t at = 2; at < bytes.size();) at = readSegment(bytes, at);
    if (image.width == 0 || image.height == 0) throw ImageProblem(Formats::sentence("a damaged JPEG file"));
    image.entries += "/Filter /DCTDecode ";
    // Programs that write this marker write inverted inks.
    if (components == 4 && isFromAdobe) image.entries += "/Decode [1 0 1 0 1 0 1 0] ";
    image.data = std::move(bytes);
    return std::move(image);
  }

 private:
  // Returns where the next segment starts.
  std::size_t readSegment(std::string_view bytes, std::size_t at) {
    const Bytes all(bytes);
    if (all.byte(at) != 0xFF) return at + 1;
    const unsigned marker = all.byte(at + 1);
    if (marker == 0xFF) return at + 1;
    if (standsAlone(marker)) return at + 2;
    if (marker == startOfScan || marker == endOfImage) return bytes.size();
    const std::size_t length = all.two(at + 2);
    if (length < 2 || at + 2 + length > bytes.size()) throw ImageProblem(Formats::sentence("a damaged JPEG file"));
    readContent(marker, bytes.substr(at + 4, length - 2));
    return at + 2 + length;
  }

  void readContent(unsigned marker, std::string_view content) {
    using namespace std::string_view_literals;
    if (startsFrame(marker)) return readFrame(marker, Bytes(content));
    if (marker == 0xE0 && content.starts_with("JFIF\0"sv)) readResolution(Bytes(content));
    if (marker == 0xE1 && content.starts_with("Exif\0\0"sv)) image.orientation = orientationIn(content.substr(6));
    if (marker == 0xEE && content.starts_with("Adobe"sv)) isFromAdobe = true;
  }

  void readFrame(unsigned marker, const Bytes& frame) {
    constexpr unsigned lastOfTheCommonKinds = 0xC2;  // baseline, extended and progressive
    const unsigned bits = frame.byte(0);
    components = frame.byte(5);
    const bool isCommon = marker <= lastOfTheCommonKinds && bits == 8;
    if (!isCommon || (components != 1 && components != 3 && components != 4))
      throw ImageProblem(Formats::sentence("a JPEG file of a rare kind"));
    image.height = static_cast<int>(frame.two(1));
    image.width = static_cast<int>(frame.two(3));
    const char* const space = components == 1 ? "/DeviceGray" : components == 3 ? "/DeviceRGB" : "/DeviceCMYK";
    image.entries = "/ColorSpace " + std::string(space) + " /BitsPerComponent 8 ";
  }

  void readResolution(const Bytes& content) {
    constexpr unsigned perCentimetre = 2;
    const unsigned unit = content.byte(7);
    if (unit == 0) return;  // the numbers are a proportion alone
    const double perInch = unit == perCentimetre ? 2.54 : 1;
    image.across = pointsPerPixel(content.two(8) * perInch);
    image.down = pointsPerPixel(content.two(10) * perInch);
  }

  Image image{.across = pointsPerPixel(0), .down = pointsPerPixel(0)};
  unsigned components = 0;
  bool isFromAdobe = false;
};

}  // namespace

double pointsPerPixel(double perInch) {
  constexpr double usual = 96, least = 10, most = 10'000;
  return 72 / (perInch >= least && perInch <= most ? perInch : usual);
}

bool isJpeg(std::string_view start) { return start.starts_with("\xFF\xD8\xFF"); }

Image readJpeg(std::string bytes) { return JpegReader().read(std::move(bytes)); }

}  // namespace Press
