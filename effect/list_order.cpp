#include "effect/list_order.h"

#include "formats/letter_case.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace Effect {
void orderByLabel(Kiln::XUL::ListData& list, std::int32_t fixed) {
  struct Entry {
    std::u16string label;
    Kiln::SmartPtr<Kiln::XUL::ListItem> item;
  };
  std::vector<Entry> entries;
  while (list.count() > fixed) {
    const auto item = list.remove(list.count() - 1);
    std::u16string label = item->displayedText().str();
    std::transform(label.begin(), label.end(), label.begin(), Formats::lowerCase);
    entries.push_back({std::move(label), item});
  }
  std::reverse(entries.begin(), entries.end());
  std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.label < b.label; });
  for (const Entry& entry : entries) list.insert(list.count(), entry.item);
}

}  // namespace Effect
