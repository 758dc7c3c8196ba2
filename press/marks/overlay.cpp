#include "press/marks/overlay.h"

#include "press/error.h"

#include <algorithm>

namespace Press {
namespace {

constexpr std::size_t mostOverlays = 1000;

std::filesystem::path pathOf(std::string_view utf8) { return std::u8string(utf8.begin(), utf8.end()); }

Overlay entryIn(const std::string& text) {
  const std::size_t semicolon = text.find(';');
  if (semicolon == std::string::npos || semicolon == 0)
    throw Error("The overlays' \"" + excerpt(text, 200) +
                "\" does not name a file and its pages: choose the overlays again.");
  return {pathOf(std::string_view(text).substr(0, semicolon)), PageRule(text.substr(semicolon + 1))};
}

std::vector<Overlay> entriesIn(const std::string& text) {
  std::vector<Overlay> overlays;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('$', start), text.size());
    if (end > start) overlays.push_back(entryIn(text.substr(start, end - start)));
    if (overlays.size() > mostOverlays)
      throw Error("There are more than " + std::to_string(mostOverlays) + " overlays: choose fewer.");
    start = end + 1;
  }
  return overlays;
}

}  // namespace

std::vector<Overlay> overlaysFromProperties(const Properties& properties) {
  const std::string kind = valueOf(properties, "OverlayImage");
  const std::string source = valueOf(properties, "OverlaySourceFileName");
  if (kind == "MultipleOverlayImage") return entriesIn(source);
  if (kind != "OverlayImage") return {};
  if (source.empty()) throw Error("The chosen overlay's file is not there any more: choose another overlay, or none.");
  return {{pathOf(source), PageRule()}};
}

}  // namespace Press
