#include "host/chrome/strings.h"

#include "files/disk.h"
#include "formats/text.h"
#include "host/documents/xml.h"

#include <algorithm>
#include <stdexcept>

namespace Refhost {
namespace {

// The reference that the text begins with, "&amp;" for example; empty for none.
std::string_view referenceAt(std::string_view text) {
  if (text.front() != '&') return {};
  const auto end = text.find_first_of(";& \t\r\n", 1);
  return end == text.npos || text[end] != ';' ? std::string_view() : text.substr(0, end + 1);
}

// Resolves references to the five predefined XML entities, which string tables keep. Throws std::runtime_error for any
// other.
std::string withoutReferences(std::string_view text) {
  constexpr std::pair<std::string_view, char> predefined[] = {
      {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};
  std::string result;
  while (!text.empty()) {
    const std::string_view reference = referenceAt(text);
    const auto* found = std::find_if(std::begin(predefined), std::end(predefined),
                                     [reference](const auto& entry) { return entry.first == reference; });
    if (found == std::end(predefined) && !reference.empty())
      throw std::runtime_error("there is no text for the reference " + std::string(reference) + ".");
    result += reference.empty() ? text.front() : found->second;
    text.remove_prefix(std::max<std::size_t>(reference.size(), 1));
  }
  return result;
}

}  // namespace

StringTable readStrings(const std::filesystem::path& file) {
  const XmlLimits limits;
  StringTable table;
  parseEntities(Files::realDisk().read(file, limits.bytes), Files::shownPath(file), limits,
                [&table](auto name, auto text) {
                  table.emplace(Formats::toUtf16(name), Formats::toUtf16(withoutReferences(text)));
                });
  return table;
}

std::u16string_view referencedName(std::u16string_view text) {
  if (!text.starts_with(u"$IDS_") || !text.ends_with(u';')) return {};
  return text.substr(1, text.size() - 2);
}

StringTables::StringTables(const ChromeFolders& folders, std::string name) : localeName(std::move(name)) {
  bool isInAny = false;
  bool isInAll = true;
  for (const std::string& package : folders.packages()) {
    const bool isThere = read(folders, package, localeName);
    isInAny = isInAny || isThere;
    isInAll = isInAll && isThere;
  }
  if (!isInAny) throw std::runtime_error("There are no texts for the locale " + localeName + ".");
  if (isInAll) return;
  for (const std::string& package : folders.packages()) read(folders, package, std::string(fallbackLocale));
}

bool StringTables::read(const ChromeFolders& folders, const std::string& package, const std::string& locale) {
  const auto locales = folders.locales(package);
  if (std::find(locales.begin(), locales.end(), locale) == locales.end()) return false;
  const auto address = "chrome://" + package + "/content/" + locale + "/strings.dtd";
  texts.merge(readStrings(*folders.file(Formats::toUtf16(address))));
  return true;
}

std::u16string StringTables::resolve(std::u16string_view text) const {
  const auto found = texts.find(referencedName(text));
  return found == texts.end() ? std::u16string(text) : found->second;
}

}  // namespace Refhost
