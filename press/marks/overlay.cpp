#include "press/marks/overlay.h"

#include "formats/file_list.h"
#include "formats/text.h"
#include "press/error.h"

namespace Press {
namespace {

constexpr std::size_t mostOverlays = 1000;

std::filesystem::path pathOf(std::string_view utf8) { return std::u8string(utf8.begin(), utf8.end()); }

Overlay overlayIn(const Formats::FileListEntry& entry) {
  const std::string file = Formats::toUtf8(entry.file);
  const std::string pages = Formats::toUtf8(entry.pages);
  if (file.empty() || !entry.hasPages)
    throw Error("The overlays' \"" + excerpt(entry.hasPages ? file + ';' + pages : file, 200) +
                "\" does not name a file and its pages: choose the overlays again.");
  return {pathOf(file), PageRule(pages)};
}

std::vector<Overlay> overlaysIn(const std::string& list) {
  const std::u16string wide = Formats::toUtf16(list);
  std::vector<Overlay> overlays;
  for (std::u16string_view rest = wide; !rest.empty();) {
    const Formats::FileListEntry entry = Formats::takeFirst(rest);
    const bool isBlank = entry.file.empty() && !entry.hasPages;
    if (!isBlank) overlays.push_back(overlayIn(entry));
    if (overlays.size() > mostOverlays)
      throw Error("There are more than " + std::to_string(mostOverlays) + " overlays: choose fewer.");
  }
  return overlays;
}

}  // namespace

std::vector<Overlay> overlaysFromProperties(const Properties& properties) {
  namespace Prop = Formats::Prop;
  namespace Value = Formats::Value;
  const std::string source = valueOf(properties, Prop::overlaySourceFileName);
  if (isSet(properties, Prop::overlayImage, Value::multipleOverlayImage)) return overlaysIn(source);
  if (!isSet(properties, Prop::overlayImage, Value::overlayImage)) return {};
  if (source.empty()) throw Error("The chosen overlay's file is not there any more: choose another overlay, or none.");
  return {{pathOf(source), PageRule()}};
}

}  // namespace Press
