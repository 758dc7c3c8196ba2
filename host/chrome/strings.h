// String tables: the texts of "$IDS_NAME;" references, one strings.dtd per package and locale.
#pragma once

#include "host/chrome/addresses.h"

#include <map>
#include <string>
#include <string_view>

namespace Refhost {

using StringTable = std::map<std::u16string, std::u16string, std::less<>>;

// Reads a strings.dtd, which has entities with texts alone. Throws std::runtime_error: one sentence with file and line.
StringTable readStrings(const std::filesystem::path& file);

// The name in a reference: "IDS_NONE" for "$IDS_NONE;". Empty for a text that is not a reference.
std::u16string_view referencedName(std::u16string_view text);

// Has what a locale lacks that only some packages have.
inline constexpr std::string_view fallbackLocale = "en-US";

// The texts of all packages in one locale; where a package lacks the locale, what is missing is in the fallback's.
class StringTables {
 public:
  // Throws like readStrings, and for a locale that no package has.
  StringTables(const ChromeFolders& folders, std::string localeName);

  const std::string& locale() const { return localeName; }

  // Whether there is a text for the reference.
  bool has(std::u16string_view reference) const { return texts.contains(referencedName(reference)); }

  // The text of a reference; other texts and unknown references are returned unchanged.
  std::u16string resolve(std::u16string_view text) const;

 private:
  // False when the package lacks the locale. Texts that are there already stay.
  bool read(const ChromeFolders& folders, const std::string& package, const std::string& locale);

  std::string localeName;
  StringTable texts;
};

}  // namespace Refhost
