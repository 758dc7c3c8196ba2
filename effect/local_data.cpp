#include "effect/local_data.h"

namespace Effect {
namespace {

// Runs the work; keeps the first problem.
template <class Work>
bool succeeds(LocalData& found, const Work& work) {
  try {
    work();
    return true;
  } catch (const Kiln::Exception& problem) {
    if (!found.problem) found.problem = problem;
    return false;
  }
}

}  // namespace

LocalData readFolders(Kiln::Services::Path& localData) {
  LocalData found;
  Kiln::SmartPtr<Kiln::Services::TextList> names;
  found.isListed = succeeds(found, [&] {
    if (localData.exists()) names = localData.list(u"*");
  });
  if (!names) return found;
  for (std::int32_t i = 0; i < names->count(); ++i)
    succeeds(found, [&] {
      if (auto entry = localData.join(names->at(i)); entry->isFolder()) found.folders.push_back(std::move(entry));
    });
  found.isMerged = found.folders.size() > 1;
  succeeds(found, [&] { found.isMerged = found.isMerged || localData.join(u"~merge")->exists(); });
  return found;
}

}  // namespace Effect
