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

// Brings the paths of overlays into the home.
class Paths {
 public:
  explicit Paths(const NamedOverlays& overlays) : known(overlays) {}

  Text one(const Text& path) {
    const Text inHome = pathInHome(path);
    if (inHome.empty() && !path.empty()) leftOut.push_back(path);
    return inHome;
  }

  // Of a list, takes out the entries without a file in the home.
  Text several(const Text& list) {
    Text result;
    for (std::u16string_view rest = list; !rest.empty();) {
      const std::u16string_view before = rest;
      const Formats::FileListEntry entry = Formats::takeFirst(rest);
      const std::u16string_view whole = before.substr(0, before.size() - rest.size());
      // What divides a path into a file and pages is part of the path.
      const bool isDivided = entry.pages.find_first_of(u"/\\;") != entry.pages.npos;
      const Text inHome = isDivided ? Text() : pathInHome(entry.file);
      if (inHome.empty() && !(entry.file.empty() && !isDivided))
        leftOut.emplace_back(isDivided ? whole : entry.file);
      else
        result.append(inHome).append(whole.substr(entry.file.size()));
    }
    return result;
  }

  std::vector<Text> leftOut;

 private:
  // The path in the home of an overlay that has a path of any system; empty when there is none.
  Text pathInHome(std::u16string_view path) const {
    const Text name(Formats::lastPartOf(path));
    // These characters make a list of a path.
    if (!Formats::isOverlayFileName(name) || name.find_first_of(u";$") != name.npos) return {};
    const auto found = known.fromProfile.find(name);
    if (found == known.fromProfile.end() && !known.isInFolder(name)) return {};
    const Text& inHome = found == known.fromProfile.end() ? name : found->second;
    return Files::pathText(known.folder / Files::pathFromText(inHome));
  }

  const NamedOverlays& known;
};

}  // namespace

std::vector<Text> rename(TracePairs& values, const Renamed& watermarks, const NamedOverlays& overlays) {
  bool areSeveral = false;
  for (const auto& [name, value] : values)
    areSeveral = areSeveral || (name == Prop::overlaySel && value == Formats::Value::multiple);

  Paths paths(overlays);
  const auto file = [&](const Text& name) { return renamed(overlays.fromProfile, name); };
  for (auto& [name, value] : values) {
    if (name == Prop::watermarkSel) value = renamed(watermarks, value);
    if (name == Prop::overlaySel) value = file(value);
    if (name == Prop::multipleOverlayDetails) value = inEachEntry(value, file);
    if (name == Prop::overlaySourceFileName) value = areSeveral ? paths.several(value) : paths.one(value);
  }
  return paths.leftOut;
}

}  // namespace Refhost
