#include "host/profiles/overlay_index.h"

namespace Refhost {
namespace {

constexpr std::size_t fileUnits = 13;
constexpr std::size_t recordBytes = 2 * (overlayNameUnits + fileUnits);

std::u16string readField(std::string_view bytes) {
  std::u16string text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(bytes[i + 1]);
    if (low == 0 && high == 0) break;
    text += static_cast<char16_t>(low | high << 8);
  }
  return text;
}

void appendField(std::string& bytes, std::u16string_view text, std::size_t units) {
  for (std::size_t i = 0; i < units; ++i) {
    const unsigned unit = i < text.size() ? text[i] : 0U;
    bytes += static_cast<char>(static_cast<unsigned char>(unit & 0xFF));
    bytes += static_cast<char>(static_cast<unsigned char>(unit >> 8));
  }
}

}  // namespace

std::vector<OverlayEntry> readOverlayIndex(std::string_view bytes) {
  std::vector<OverlayEntry> entries;
  for (; bytes.size() >= recordBytes; bytes.remove_prefix(recordBytes))
    entries.push_back({readField(bytes.substr(0, 2 * overlayNameUnits)),
                       readField(bytes.substr(2 * overlayNameUnits, 2 * fileUnits))});
  return entries;
}

std::string overlayIndexBytes(const std::vector<OverlayEntry>& entries) {
  std::string bytes;
  for (const OverlayEntry& entry : entries) {
    appendField(bytes, entry.name, overlayNameUnits);
    appendField(bytes, entry.file, fileUnits);
  }
  return bytes;
}

std::u16string thumbnailOf(std::u16string_view overlayFile) {
  return std::u16string(overlayFile.substr(0, overlayFile.rfind(u'.'))) + u".bmp";
}

}  // namespace Refhost
