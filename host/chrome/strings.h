// String tables: the texts behind "$IDS_NAME;" references, one strings.dtd a package and locale.
#pragma once

#include "host/chrome/addresses.h"

#include <map>
#include <string>
#include <string_view>

namespace Refhost {

using StringTable = std::map<std::u16string, std::u16string, std::less<>>;

// Reads the entities of a strings.dtd; of two of one name the first counts. Throws std::runtime_error: one sentence
// with file and line.
StringTable readStrings(const std::filesystem::path& file);

// The name in a reference: "IDS_NONE" of "$IDS_NONE;". Empty for a text that is none.
std::u16string_view referencedName(std::u16string_view text);

// All packages' texts in one locale.
class StringTables {
 public:
  // Throws as readStrings, and for a locale that no package has.
  StringTables(const ChromeFolders& folders, std::string localeName);

  const std::string& locale() const { return localeName; }

  // The text that a reference stands for; any other text, and a reference to nothing, as it is.
  std::u16string resolve(std::u16string_view text) const;

 private:
  std::string localeName;
  StringTable texts;
};

}  // namespace Refhost
