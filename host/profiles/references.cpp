#include "host/profiles/references.h"

#include <algorithm>

namespace Refhost {
namespace {

using Text = std::u16string;

const Text& renamed(const Renamed& names, const Text& name) {
  const auto found = names.find(name);
  return found == names.end() ? name : found->second;
}

// A path of an overlay file, from any system.
Text renamedPath(const Text& path, const Renamed& overlays, const std::filesystem::path& overlayFolder) {
  const auto found = overlays.find(path.substr(path.find_last_of(u"/\\") + 1));
  return found == overlays.end() ? path : pathText(overlayFolder / pathFromText(found->second));
}

// Applies `rule` to the file of each entry of a list FILE;PAGES$FILE;PAGES$...
template <class Rule>
Text inEachEntry(const Text& list, const Rule& rule) {
  Text result;
  for (std::size_t from = 0; from < list.size();) {
    const std::size_t end = std::min(list.find(u'$', from), list.size());
    const std::size_t fileEnd = std::min(list.find(u';', from), end);
    result += rule(list.substr(from, fileEnd - from)) + list.substr(fileEnd, end + 1 - fileEnd);
    from = end + 1;
  }
  return result;
}

}  // namespace

void rename(TracePairs& values, const Renamed& watermarks, const Renamed& overlays,
            const std::filesystem::path& overlayFolder) {
  bool areSeveral = false;
  for (const auto& [name, value] : values) areSeveral = areSeveral || (name == u"OverlaySel" && value == u"Multiple");

  const auto file = [&](const Text& name) { return renamed(overlays, name); };
  const auto path = [&](const Text& text) { return renamedPath(text, overlays, overlayFolder); };
  for (auto& [name, value] : values) {
    if (name == u"WatermarkSel") value = renamed(watermarks, value);
    if (name == u"OverlaySel") value = file(value);
    if (name == u"MultipleOverlayDetails") value = inEachEntry(value, file);
    if (name == u"OverlaySourceFileName") value = areSeveral ? inEachEntry(value, path) : path(value);
  }
}

}  // namespace Refhost
