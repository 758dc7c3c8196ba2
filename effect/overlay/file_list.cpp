#include "effect/overlay/file_list.h"

namespace Effect {

FileListEntry takeFirst(std::u16string_view& list) {
  const std::u16string_view entry = list.substr(0, list.find(u'$'));
  list.remove_prefix(entry.size() < list.size() ? entry.size() + 1 : list.size());
  const std::u16string_view file = entry.substr(0, entry.find(u';'));
  const bool hasPages = file.size() < entry.size();
  return {file, hasPages ? entry.substr(file.size() + 1) : std::u16string_view(), hasPages};
}

void append(std::u16string& list, std::u16string_view file, std::u16string_view pages) {
  list += file;
  list += u';';
  list += pages;
  list += u'$';
}

}  // namespace Effect
