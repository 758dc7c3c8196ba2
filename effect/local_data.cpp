#include "effect/local_data.h"

namespace Effect {

Folders localDataFolders(Kiln::Services::Path& localData) {
  Folders folders;
  const auto names = localData.list(u"*");
  for (std::int32_t i = 0; i < names->count(); ++i)
    if (auto entry = localData.join(names->at(i)); entry->isFolder()) folders.push_back(std::move(entry));
  return folders;
}

bool isMergedData(Kiln::Services::Path& localData, const Folders& folders) {
  return folders.size() > 1 || localData.join(u"~merge")->exists();
}

}  // namespace Effect
