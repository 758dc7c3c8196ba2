#include "press/job/overlay_words.h"

#include "formats/overlay_index.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "press/error.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <system_error>
#include <utility>

namespace Press {
namespace {

using Run = std::pair<int, int>;  // first and last page

int countOf(const Effects& effects, int pages) {
  return overlaysCountSheets(effects) ? (pages + effects.pagesOnSheet - 1) / effects.pagesOnSheet : pages;
}

// The position of the first overlay of each overlay's file.
std::vector<std::size_t> firstOfEachFile(const Effects& effects) {
  std::map<std::filesystem::path, std::size_t> first;
  std::vector<std::size_t> positions;
  for (std::size_t i = 0; i < effects.overlays.size(); ++i)
    positions.push_back(first.try_emplace(effects.overlays[i].file, i).first->second);
  return positions;
}

// The pages of each combination of overlays, as positions in `effects`.
std::map<std::vector<std::size_t>, std::vector<Run>> runsOf(const Effects& effects, int count) {
  std::map<std::vector<std::size_t>, std::vector<Run>> runs;
  const std::vector<std::size_t> positions = firstOfEachFile(effects);
  for (int page = 1; page <= count; ++page) {
    std::vector<std::size_t> printed;
    for (std::size_t i = 0; i < effects.overlays.size(); ++i)
      if (effects.overlays[i].pages.has(page)) printed.push_back(positions[i]);
    if (printed.empty()) continue;
    std::vector<Run>& known = runs[printed];
    if (!known.empty() && known.back().second == page - 1)
      known.back().second = page;
    else
      known.emplace_back(page, page);
  }
  return runs;
}

std::string inWords(const Run& run) {
  return std::to_string(run.first) + (run.second > run.first ? '-' + std::to_string(run.second) : "");
}

std::string inWords(const std::vector<Run>& runs) {
  constexpr std::size_t longRow = 4;
  const auto isNext = [](const Run& run, const Run& next) {
    return run.first == run.second && next.first == next.second && next.first == run.first + 2;
  };
  std::string words;
  for (std::size_t i = 0; i < runs.size();) {
    std::size_t end = i + 1;
    while (end < runs.size() && isNext(runs[end - 1], runs[end])) ++end;
    const bool isLong = end - i >= longRow;
    for (std::size_t each = i; each < end; ++each) {
      if (isLong && each > i + 1 && each + 1 < end) continue;
      words += words.empty() ? "" : ", ";
      words += (isLong && each + 1 == end ? "..., " : "") + inWords(runs[each]);
    }
    i = end;
  }
  return words;
}

// The name of an overlay's file in the index beside it; of two, the last one counts. Empty without one.
std::string nameInIndex(const std::filesystem::path& file) {
  constexpr std::uintmax_t mostBytes = 64 << 20;
  const std::filesystem::path index = file.parent_path() / std::u16string(Formats::overlayIndexName);
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(index, ignored) || std::filesystem::file_size(index, ignored) > mostBytes)
    return {};
  std::ifstream stream(index, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  const std::u16string fileName = file.filename().u16string();
  std::string name;
  for (const Formats::IndexEntry& entry : Formats::readIndex(bytes))
    if (entry.fileName == fileName) name = Formats::toValidUtf8(entry.name);
  return name;
}

}  // namespace

std::string overlayName(const std::filesystem::path& file) {
  const std::string name = nameInIndex(file);
  return name.empty() ? utf8(file.filename()) : name;
}

bool overlaysCountSheets(const Effects& effects) { return effects.pagesOnSheet > 1 && !effects.overlaysOnEachPage; }

std::string overlaysInWords(const Effects& effects, int pages) {
  const auto runs = runsOf(effects, countOf(effects, pages));
  std::vector<std::pair<std::vector<std::size_t>, std::vector<Run>>> sorted(runs.begin(), runs.end());
  std::ranges::sort(sorted, {}, [](const auto& entry) { return entry.second.front(); });
  std::string words;
  for (const auto& [printed, places] : sorted) {
    words += (words.empty() ? "" : "; ") + inWords(places) + ": ";
    for (std::size_t i = 0; i < printed.size(); ++i)
      words += (i == 0 ? "" : ", ") + overlayName(effects.overlays[printed[i]].file);
  }
  return words;
}

std::vector<std::string> overlaysOnNoPage(const Effects& effects, int pages) {
  std::vector<std::string> names;
  for (const Overlay& overlay : effects.overlays)
    if (!overlay.pages.hasAny(countOf(effects, pages))) names.push_back(overlayName(overlay.file));
  return names;
}

std::vector<std::string> overlayNotes(const Effects& effects) {
  std::vector<std::string> notes;
  for (const OverlayTrouble& trouble : effects.overlayTroubles) {
    const std::string overlay = Formats::quoted(excerpt(overlayName(trouble.file), 200));
    switch (trouble.kind) {
      case OverlayTrouble::Kind::noPages:
        notes.push_back(Formats::sentence(
            "For the overlay {1}, no page is named: write All, Even, Odd, or numbers such as 1,3,5-9.", overlay));
        break;
      case OverlayTrouble::Kind::namesNoPage:
        notes.push_back(Formats::sentence(
            "For the overlay {1}, {2} names no page: write All, Even, Odd, or numbers such as 1,3,5-9.", overlay,
            Formats::quoted(excerpt(trouble.text, 60))));
        break;
      case OverlayTrouble::Kind::noneAssigned:
        notes.emplace_back(Formats::sentence("Several overlays are chosen, but none has pages: choose them again."));
        break;
      case OverlayTrouble::Kind::folder: break;  // refused
    }
  }
  return notes;
}

}  // namespace Press
