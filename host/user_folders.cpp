#include "host/user_folders.h"

#include "host/documents/captured.h"
#include "host/documents/path_text.h"
#include "host/documents/whole_file.h"

namespace Refhost {
namespace {

namespace fs = std::filesystem;

// The folder in a setting; empty for none.
fs::path folderIn(const Settings& settings, std::u16string_view key) {
  return pathFromText(settings.get(key).value_or(u""));
}

std::vector<fs::path> foldersIn(Disk& disk, const fs::path& folder) {
  std::vector<fs::path> folders;
  if (disk.kind(folder) == EntryKind::folder)
    for (const Entry& entry : disk.entries(folder))
      if (entry.kind == EntryKind::folder && !entry.link) folders.push_back(folder / entry.name);
  return folders;
}

void tidy(Disk& disk, const fs::path& folder) {
  try {
    sweepTemporaries(disk, folder);
  } catch (const DiskError&) {
    // Ignored: the folder is used as it is.
  }
  putAllBack(disk, folder);
}

}  // namespace

void tidyUserFolders(Disk& disk, const Settings& settings) {
  const fs::path overlays = folderIn(settings, u"kilnworks.pdlsettings.folder").relative_path();
  if (const auto user = folderIn(settings, u"kilnworks.user.path"); !user.empty()) tidy(disk, user);
  if (const auto profile = folderIn(settings, u"kilnworks.user.userprofile"); !profile.empty())
    tidy(disk, profile / overlays);
  const fs::path localData = folderIn(settings, u"kilnworks.user.localdata.path");
  if (localData.empty()) return;
  tidy(disk, localData);
  try {
    for (const fs::path& folder : foldersIn(disk, localData)) {
      tidy(disk, folder);
      tidy(disk, folder / overlays.filename());
    }
  } catch (const DiskError&) {
    // Ignored as well.
  }
}

}  // namespace Refhost
