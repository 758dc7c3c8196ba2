#include "host/chrome/strings.h"

#include "files/disk.h"
#include "formats/text.h"
#include "host/documents/xml.h"

#include <algorithm>
#include <stdexcept>

namespace Refhost {
namespace {

// String tables keep references to the five predefined XML entities; resolves them.
std::string withoutPredefinedReferences(std::string_view text) {
  constexpr std::pair<std::string_view, char> predefined[] = {
      {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};
  std::string result;
  while (!text.empty()) {
    const auto* reference = std::find_if(std::begin(predefined), std::end(predefined),
                                         [text](const auto& entry) { return text.starts_with(entry.first); });
    const bool found = reference != std::end(predefined);
    result += found ? reference->second : text.front();
    text.remove_prefix(found ? reference->first.size() : 1);
  }
  return result;
}

}  // namespace

StringTable readStrings(const std::filesystem::path& file) {
  const XmlLimits limits;
  StringTable table;
  parseEntities(Files::realDisk().read(file, limits.bytes), Files::shownPath(file), limits,
                [&table](auto name, auto text) {
                  table.emplace(Formats::toUtf16(name), Formats::toUtf16(withoutPredefinedReferences(text)));
                });
  return table;
}

std::u16string_view referencedName(std::u16string_view text) {
  if (!text.starts_with(u"$IDS_") || !text.ends_with(u';')) return {};
  return text.substr(1, text.size() - 2);
}

StringTables::StringTables(const ChromeFolders& folders, std::string name) : localeName(std::move(name)) {
  bool found = false;
  for (const std::string& package : folders.packages()) {
    const auto locales = folders.locales(package);
    if (std::find(locales.begin(), locales.end(), localeName) == locales.end()) continue;
    found = true;
    const auto address = "chrome://" + package + "/content/" + localeName + "/strings.dtd";
    texts.merge(readStrings(*folders.file(Formats::toUtf16(address))));
  }
  if (!found) throw std::runtime_error("There are no texts for the locale " + localeName + ".");
}

std::u16string StringTables::resolve(std::u16string_view text) const {
  const auto found = texts.find(referencedName(text));
  return found == texts.end() ? std::u16string(text) : found->second;
}

}  // namespace Refhost
