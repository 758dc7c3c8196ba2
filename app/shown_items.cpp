#include "app/shown_items.h"

#include "formats/text.h"

namespace App {

std::vector<ShownItem> shownItems(Refhost::SelectorNode& list) {
  std::vector<ShownItem> items;
  for (std::int32_t i = 0; i < list.items().count(); ++i) {
    const auto item = list.items().at(i);
    items.push_back({Formats::toUtf8(item->displayedText().view()), item->value().str(), i});
  }
  return items;
}

std::string inQuotes(const std::string& name) { return '"' + name + '"'; }

std::string listed(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : ", ") + inQuotes(name);
  return list;
}

}  // namespace App
