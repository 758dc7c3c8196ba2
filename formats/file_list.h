// The text format of several overlays: FILE;PAGES$ for each, concatenated, without quoting or escaping.
//
// OverlaySourceFileName holds paths, for printing; MultipleOverlayDetails holds file names, and one entry for each slot
// of the dialog, including empty ones. Input may have any length, so it is parsed one entry at a time:
//
//   while (!list.empty()) use(takeFirst(list));
#pragma once

#include <string>
#include <string_view>

namespace Formats {

// Views into the parsed list.
struct FileListEntry {
  std::u16string_view file;
  std::u16string_view pages;

  // False when the entry has no ";"; all of it is then the file.
  bool hasPages;
};

// Removes and returns the first entry, which ends at "$" or at the end of the list. Its file ends at its first ";".
inline FileListEntry takeFirst(std::u16string_view& list) {
  const std::u16string_view entry = list.substr(0, list.find(u'$'));
  list.remove_prefix(entry.size() < list.size() ? entry.size() + 1 : list.size());
  const std::u16string_view file = entry.substr(0, entry.find(u';'));
  const bool hasPages = file.size() < entry.size();
  return {file, hasPages ? entry.substr(file.size() + 1) : std::u16string_view(), hasPages};
}

// Appends an entry.
inline void append(std::u16string& list, std::u16string_view file, std::u16string_view pages) {
  list += file;
  list += u';';
  list += pages;
  list += u'$';
}

}  // namespace Formats
