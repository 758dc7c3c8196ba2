#include "host/user_folders.h"

#include "files/home_lock.h"
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

// Ignores failures: the folder is used as it is.
template <class Work>
void tryTo(const Work& work) {
  try {
    work();
  } catch (const Files::DiskError&) {
  }
}

std::vector<fs::path> foldersIn(Files::Disk& disk, const fs::path& folder) {
  std::vector<fs::path> folders;
  if (disk.kind(folder) == Files::EntryKind::folder)
    for (const Files::Entry& entry : disk.entries(folder))
      if (entry.kind == Files::EntryKind::folder && !entry.link) folders.push_back(folder / entry.name);
  return folders;
}

// The folders of the settings, whether or not they exist.
std::vector<fs::path> userFolders(Files::Disk& disk, const Settings& settings) {
  const fs::path overlays = folderIn(settings, Formats::Setting::settingsFolder).relative_path();
  std::vector<fs::path> folders;
  if (const auto user = folderIn(settings, Formats::Setting::userPath); !user.empty()) folders.push_back(user);
  if (const auto profile = folderIn(settings, Formats::Setting::userProfile); !profile.empty())
    folders.push_back(profile / overlays);
  const fs::path localData = folderIn(settings, Formats::Setting::localDataPath);
  if (localData.empty()) return folders;
  folders.push_back(localData);
  tryTo([&] {
    for (const fs::path& folder : foldersIn(disk, localData)) {
      folders.push_back(folder);
      folders.push_back(folder / overlays.filename());
    }
  });
  return folders;
}

}  // namespace

void tidyUserFolders(Files::Disk& disk, const Settings& settings, const fs::path& home) {
  std::vector<fs::path> toPutBack;
  for (const fs::path& folder : userFolders(disk, settings)) {
    tryTo([&] { Files::sweepTemporaries(disk, folder); });
    tryTo([&] {
      if (hasToPutBack(disk, folder)) toPutBack.push_back(folder);
    });
  }
  if (toPutBack.empty()) return;
  tryTo([&] {
    const Files::HomeLock lock(disk, home, std::chrono::milliseconds(0));
    for (const fs::path& folder : toPutBack) putAllBack(disk, folder);
  });
}

}  // namespace Refhost
