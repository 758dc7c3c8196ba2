#include "press/marks/overlay.h"

#include "formats/file_list.h"
#include "formats/overlay_index.h"
#include "formats/page_rules.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "press/error.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace Press {
namespace {

namespace Prop = Formats::Prop;
namespace Value = Formats::Value;

constexpr std::size_t mostOverlays = 1000;

std::filesystem::path pathOf(std::string_view utf8) { return std::u8string(utf8.begin(), utf8.end()); }

// The pages that an overlay is printed on, and the items of its list that name none.
struct ReadPages {
  std::optional<PageRule> pages;
  std::string unread;
};

// Reads a list that a user can enter, item by item. Nothing that names a page is lost by what stands beside it.
ReadPages readList(std::string_view list) {
  std::string read;
  std::string unread;
  while (!list.empty()) {
    const std::string item(list.substr(0, list.find(',')));
    list.remove_prefix(std::min(item.size() + 1, list.size()));
    if (item.empty()) continue;
    std::string& items = Formats::isPageItem(item) ? read : unread;
    items += (items.empty() ? "" : ",") + item;
  }
  if (read.empty()) return {std::nullopt, unread};
  return {PageRule(read), unread};
}

// Throws Error for pages that no user can enter.
ReadPages readPages(const std::string& pages) {
  ReadPages result;
  try {
    result.pages = PageRule(pages);
  } catch (const Error&) {
    if (!Formats::isPageList(Formats::toUtf16(pages))) throw;
    result = readList(pages);
  }
  if (result.pages && !result.pages->hasAny(std::numeric_limits<int>::max())) result.pages.reset();
  if (!result.pages) result.unread = pages;
  return result;
}

// Whether an entry is part of a path instead: the path has "$" or ";" in it.
bool isPartOfPath(const Formats::FileListEntry& entry) {
  return !entry.hasPages || entry.pages.find_first_of(u"/\\;") != entry.pages.npos;
}

Error invalidEntry(const Formats::FileListEntry& entry) {
  const std::string file = Formats::toUtf8(entry.file);
  const std::string shown = excerpt(entry.hasPages ? file + ';' + Formats::toUtf8(entry.pages) : file, 200);
  const std::string quoted = Formats::quoted(shown);
  if (entry.file.empty() || !isPartOfPath(entry))
    return Error(
        Formats::sentence("The overlays' {1} does not name a file and its pages: choose the overlays again.", quoted));
  return Error(Formats::sentence(
      "The overlays' {1} does not name a file and its pages: several overlays cannot lie in a folder that has \"$\" or "
      "\";\" in its name; choose one overlay, or move them.",
      quoted));
}

// Calls `take` with each entry of a list that is not blank.
template <class Take>
void forEachEntry(const std::string& list, const Take& take) {
  const std::u16string wide = Formats::toUtf16(list);
  for (std::u16string_view rest = wide; !rest.empty();) {
    const Formats::FileListEntry entry = Formats::takeFirst(rest);
    if (!entry.file.empty() || entry.hasPages) take(entry);
  }
}

std::vector<Overlay> overlaysIn(const std::string& list) {
  std::vector<Overlay> overlays;
  std::size_t entries = 0;
  forEachEntry(list, [&](const Formats::FileListEntry& entry) {
    if (entry.file.empty() || isPartOfPath(entry)) throw invalidEntry(entry);
    if (++entries > mostOverlays)
      throw Error(Formats::sentence("There are more than {1} overlays: choose fewer.", mostOverlays));
    const ReadPages read = readPages(Formats::toUtf8(entry.pages));
    if (read.pages) overlays.push_back({pathOf(Formats::toUtf8(entry.file)), *read.pages});
  });
  return overlays;
}

bool isRule(const std::string& pages) {
  try {
    readPages(pages);
    return true;
  } catch (const Error&) {
    return false;
  }
}

// The paths with "$" or ";" in a list, put together again as far as the pages after them show where they end.
std::vector<OverlayTrouble> dividedPaths(const std::string& list) {
  std::vector<OverlayTrouble> troubles;
  std::string path;
  for (std::string_view rest = list; !rest.empty();) {
    const std::string_view part = rest.substr(0, rest.find('$'));
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    const std::size_t end = part.rfind(';');
    if (end == part.npos || !isRule(std::string(part.substr(end + 1)))) {
      path.append(part) += '$';
      continue;
    }
    path += part.substr(0, end);
    if (path.find_first_of("$;") != path.npos) troubles.push_back({OverlayTrouble::Kind::folder, pathOf(path), {}});
    path.clear();
    if (troubles.size() >= mostOverlays) break;
  }
  return troubles;
}

bool isMultiple(const Properties& properties) {
  if (!isSet(properties, Prop::overlayImage, Value::multipleOverlayImage)) return false;
  const std::u16string selection = Formats::toUtf16(valueOf(properties, Prop::overlaySel));
  const std::u16string source = Formats::toUtf16(valueOf(properties, Prop::overlaySourceFileName));
  return selection.empty() || Formats::lastPartOf(source) != selection;
}

}  // namespace

std::vector<Overlay> overlaysFromProperties(const Properties& properties) {
  const std::string source = valueOf(properties, Prop::overlaySourceFileName);
  if (isMultiple(properties)) return overlaysIn(source);
  if (!isSet(properties, Prop::overlayImage, Value::overlayImage) &&
      !isSet(properties, Prop::overlayImage, Value::multipleOverlayImage))
    return {};
  if (source.empty())
    throw Error(Formats::sentence("The chosen overlay's file is not there any more: choose another overlay, or none."));
  return {{pathOf(source), PageRule()}};
}

std::vector<OverlayTrouble> overlayTroubles(const Properties& properties) {
  if (!isMultiple(properties)) return {};
  const std::string source = valueOf(properties, Prop::overlaySourceFileName);
  std::vector<OverlayTrouble> troubles = dividedPaths(source);
  if (!troubles.empty()) return troubles;
  bool isBlank = true;
  forEachEntry(source, [&](const Formats::FileListEntry& entry) {
    isBlank = false;
    const std::string pages = Formats::toUtf8(entry.pages);
    if (isPartOfPath(entry) || !isRule(pages) || troubles.size() >= mostOverlays) return;
    const std::string unread = readPages(pages).unread;
    const auto kind = pages.empty() ? OverlayTrouble::Kind::noPages : OverlayTrouble::Kind::namesNoPage;
    if (pages.empty() || !unread.empty()) troubles.push_back({kind, pathOf(Formats::toUtf8(entry.file)), unread});
  });
  if (isBlank) troubles.push_back({});
  return troubles;
}

}  // namespace Press
