#include "host/profiles/references.h"

#include "formats/file_list.h"
#include "formats/names.h"
#include "formats/overlay_index.h"

namespace Refhost {
namespace {

namespace Prop = Formats::Prop;

using Text = std::u16string;

const Text& renamed(const Renamed& names, const Text& name) {
  const auto found = names.find(name);
  return found == names.end() ? name : found->second;
}

// A path of an overlay file, from any system.
Text renamedPath(const Text& path, const Renamed& overlays, const std::filesystem::path& overlayFolder) {
  const auto found = overlays.find(Text(Formats::lastPartOf(path)));
  return found == overlays.end() ? path : Files::pathText(overlayFolder / Files::pathFromText(found->second));
}

// Applies `rule` to the file of each entry of a list.
template <class Rule>
Text inEachEntry(const Text& list, const Rule& rule) {
  Text result;
  for (std::u16string_view rest = list; !rest.empty();) {
    const std::u16string_view before = rest;
    const Formats::FileListEntry entry = Formats::takeFirst(rest);
    result += rule(Text(entry.file));
    result += before.substr(entry.file.size(), before.size() - rest.size() - entry.file.size());
  }
  return result;
}

}  // namespace

void rename(TracePairs& values, const Renamed& watermarks, const Renamed& overlays,
            const std::filesystem::path& overlayFolder) {
  bool areSeveral = false;
  for (const auto& [name, value] : values)
    areSeveral = areSeveral || (name == Prop::overlaySel && value == Formats::Value::multiple);

  const auto file = [&](const Text& name) { return renamed(overlays, name); };
  const auto path = [&](const Text& text) { return renamedPath(text, overlays, overlayFolder); };
  for (auto& [name, value] : values) {
    if (name == Prop::watermarkSel) value = renamed(watermarks, value);
    if (name == Prop::overlaySel) value = file(value);
    if (name == Prop::multipleOverlayDetails) value = inEachEntry(value, file);
    if (name == Prop::overlaySourceFileName) value = areSeveral ? inEachEntry(value, path) : path(value);
  }
}

}  // namespace Refhost
