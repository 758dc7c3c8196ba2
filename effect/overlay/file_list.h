// The list form of several overlays: FILE;PAGES$ for each, one behind the other, without quoting or escaping.
//
// OverlaySourceFileName has paths in it, for the print side; MultipleOverlayDetails has file names, and an entry for
// each slot of the dialog, an empty slot's too. A list is read entry by entry, since one from outside may have any
// length:
//
//   while (!list.empty()) use(takeFirst(list));
#pragma once

#include <string>
#include <string_view>

namespace Effect {

// Views of the list that it is from.
struct FileListEntry {
  std::u16string_view file;
  std::u16string_view pages;

  // Whether there is a ";" in the entry; without one all of it is the file.
  bool hasPages;
};

// The first entry, up to a "$" or the list's end, and in it the file up to its first ";". Moves `list` behind it.
FileListEntry takeFirst(std::u16string_view& list);

// Adds an entry at the end.
void append(std::u16string& list, std::u16string_view file, std::u16string_view pages);

}  // namespace Effect
