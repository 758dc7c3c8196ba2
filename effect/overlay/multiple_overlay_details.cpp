#include "effect/overlay/multiple_overlay_details.h"

#include "effect/overlay/file_list.h"

#include <map>

namespace Effect {

std::u16string detailsOf(const SlotContents& slots) {
  std::u16string details;
  for (const SlotContent& slot : slots) append(details, slot.label, slot.pages);
  return details;
}

std::u16string sourceFilesOf(const SlotContents& slots, const std::function<std::u16string(std::size_t)>& pathOf) {
  std::u16string files;
  for (std::size_t i = 0; i < slots.size(); ++i)
    if (!slots[i].label.empty() && !slots[i].pages.empty()) append(files, pathOf(i), slots[i].pages);
  return files;
}

std::optional<SlotContents> readDetails(std::u16string_view value, std::u16string_view defaultLabel,
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

}  // namespace Effect
