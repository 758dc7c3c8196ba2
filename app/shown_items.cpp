#include "app/shown_items.h"

#include "app/messages.h"
#include "formats/printable.h"
#include "formats/sentences.h"
#include "formats/text.h"

#include <algorithm>
#include <set>

namespace App {

std::vector<ShownItem> shownItems(Refhost::SelectorNode& list) {
  std::vector<ShownItem> items;
  for (std::int32_t i = 0; i < list.items().count(); ++i) {
    const auto item = list.items().at(i);
    items.push_back({Formats::toUtf8(item->displayedText().view()), item->value().str(), i});
  }
  return items;
}

std::string nameMeant(const std::vector<std::string>& names, const std::string& word) {
  if (std::ranges::find(names, word) != names.end()) return word;
  std::set<std::string> listedSo;
  for (const std::string& name : names)
    if (Formats::printable(name) == word) listedSo.insert(name);
  if (listedSo.size() > 1)
    throw std::runtime_error(
        Formats::sentence("Several names are listed as {1}: choose among them in the preferences.", inQuotes(word)));
  return listedSo.empty() ? word : *listedSo.begin();
}

std::string listed(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names)
    list = list.empty() ? inQuotes(name) : Formats::sentence("{1}, {2}", list, inQuotes(name));
  return list;
}

}  // namespace App
