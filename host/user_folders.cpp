#include "host/user_folders.h"

#include "files/path_text.h"
#include "files/whole_file.h"
#include "formats/names.h"
#include "host/documents/captured.h"

namespace Refhost {
namespace {

namespace fs = std::filesystem;

// The folder in a setting; empty for none.
fs::path folderIn(const Settings& settings, std::u16string_view key) {
  return Files::pathFromText(settings.get(key).value_or(u""));
}

std::vector<fs::path> foldersIn(Files::Disk& disk, const fs::path& folder) {
  std::vector<fs::path> folders;
  if (disk.kind(folder) == Files::EntryKind::folder)
    for (const Files::Entry& entry : disk.entries(folder))
      if (entry.kind == Files::EntryKind::folder && !entry.link) folders.push_back(folder / entry.name);
  return folders;
}

void tidy(Files::Disk& disk, const fs::path& folder) {
  try {
    Files::sweepTemporaries(disk, folder);
  } catch (const Files::DiskError&) {
    // Ignored: the folder is used as it is.
  }
  putAllBack(disk, folder);
}

}  // namespace

void tidyUserFolders(Files::Disk& disk, const Settings& settings) {
  const fs::path overlays = folderIn(settings, Formats::Setting::settingsFolder).relative_path();
  if (const auto user = folderIn(settings, Formats::Setting::userPath); !user.empty()) tidy(disk, user);
  if (const auto profile = folderIn(settings, Formats::Setting::userProfile); !profile.empty())
    tidy(disk, profile / overlays);
  const fs::path localData = folderIn(settings, Formats::Setting::localDataPath);
  if (localData.empty()) return;
  tidy(disk, localData);
  try {
    for (const fs::path& folder : foldersIn(disk, localData)) {
      tidy(disk, folder);
      tidy(disk, folder / overlays.filename());
    }
  } catch (const Files::DiskError&) {
    // Ignored as well.
  }
}

}  // namespace Refhost
