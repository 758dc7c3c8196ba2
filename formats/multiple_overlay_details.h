// The text formats that the dialog for several overlays saves.
//
//   MultipleOverlayDetails   LABEL;RULE$ for each of the eight slots in order, a free slot as ;$
//   OverlaySourceFileName    PATH;RULE$ for each slot that has both an overlay and a rule
//
// An overlay's label is its file name, which identifies it in the store. Nothing is quoted: a label with ";" or "$"
// does not survive a round trip.
#pragma once

#include "formats/file_list.h"
#include "formats/page_rules.h"

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace Formats {

// Both empty for a free slot.
struct SlotContent {
  std::u16string label;
  std::u16string pages;

  friend bool operator==(const SlotContent&, const SlotContent&) = default;
};

using SlotContents = std::array<SlotContent, slotCount>;

inline std::u16string detailsOf(const SlotContents& slots) {
  std::u16string details;
  for (const SlotContent& slot : slots) append(details, slot.label, slot.pages);
  return details;
}

// `pathOf` returns the path of the overlay in a slot, "None" for one that is gone, which is left out.
inline std::u16string sourceFilesOf(const SlotContents& slots,
                                    const std::function<std::u16string(std::size_t)>& pathOf) {
  std::u16string files;
  for (std::size_t i = 0; i < slots.size(); ++i)
    if (!slots[i].label.empty() && !slots[i].pages.empty())
      if (const std::u16string path = pathOf(i); path != Value::none) append(files, path, slots[i].pages);
  return files;
}

// Parses a value of MultipleOverlayDetails. Returns nothing when the defaults apply: for an empty value, and when
// `isThere` is false for one of its labels. Calls `isThere` once per label.
//
// An entry without ";" or with an empty label leaves its slot free; an empty label in the first slot means
// `defaultLabel` on all pages. Rules are not validated. Of entries beyond the eighth only the labels are checked.
inline std::optional<SlotContents> readDetails(std::u16string_view value, std::u16string_view defaultLabel,
                                               const std::function<bool(std::u16string_view)>& isThere) {
  if (value.empty()) return {};
  SlotContents slots;
  std::map<std::u16string_view, bool> answers;
  for (std::size_t i = 0; !value.empty(); ++i) {
    const FileListEntry entry = takeFirst(value);
    if (!entry.hasPages) continue;
    if (entry.file.empty()) {
      if (i == 0 && !defaultLabel.empty()) slots[i] = {std::u16string(defaultLabel), std::u16string(firstRule(i))};
      continue;
    }
    const auto [answer, isNew] = answers.try_emplace(entry.file, false);
    if (isNew) answer->second = isThere(entry.file);
    if (!answer->second) return {};
    if (i < slotCount) slots[i] = {std::u16string(entry.file), std::u16string(entry.pages)};
  }
  return slots;
}

}  // namespace Formats
