#include "host/user_folders.h"

#include "files/file_set.h"
#include "files/home_lock.h"
#include "files/path_text.h"
#include "files/whole_file.h"
#include "formats/names.h"
#include "host/documents/captured.h"
#include "host/profiles/home_import.h"

#include <algorithm>
#include <optional>
#include <vector>

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

struct UserFolder {
  fs::path path;
  bool isOwn = true;  // not local data, which the user cannot fix
};

// The folders of the settings, whether or not they exist.
std::vector<UserFolder> userFolders(Files::Disk& disk, const Settings& settings) {
  const fs::path overlays = folderIn(settings, Formats::Setting::settingsFolder).relative_path();
  std::vector<UserFolder> folders;
  if (const auto user = folderIn(settings, Formats::Setting::userPath); !user.empty()) folders.push_back({user});
  if (const auto profile = folderIn(settings, Formats::Setting::userProfile); !profile.empty())
    folders.push_back({overlays.empty() ? profile : profile / overlays});
  const fs::path localData = folderIn(settings, Formats::Setting::localDataPath);
  if (localData.empty()) return folders;
  folders.push_back({localData, false});
  Files::tryTo([&] {
    for (const fs::path& folder : foldersIn(disk, localData)) {
      folders.push_back({folder, false});
      folders.push_back({folder / overlays.filename(), false});
    }
  });
  return folders;
}

bool isReadOnly(const Files::DiskError& problem) {
  return problem.code() == std::errc::permission_denied || problem.code() == std::errc::operation_not_permitted ||
         problem.code() == std::errc::read_only_file_system;
}

// Ignores the failures in folders that are not the user's own or that nobody can write to.
template <class Work>
void tidy(const UserFolder& folder, const Work& work) {
  try {
    work();
  } catch (const Files::DiskError& problem) {
    if (folder.isOwn && !isReadOnly(problem)) throw;
  }
}

// Empty while another program has the home's lock.
std::optional<Files::HomeLock> lockAtOnce(Files::Disk& disk, const fs::path& home) {
  std::optional<Files::HomeLock> lock;
  Files::tryTo([&] { lock.emplace(disk, home, std::chrono::milliseconds(0)); });
  return lock;
}

}  // namespace

void completeImport(Files::Disk& disk, const fs::path& home, std::chrono::milliseconds longestWait,
                    const std::function<void(const std::string&)>& tell) {
  try {
    if (disk.kind(importJournal(home)) == Files::EntryKind::none) return;
    const Files::HomeLock lock(disk, home, longestWait);
    Files::completeFileSet(disk, importJournal(home));
  } catch (const Files::RefusedJournal& error) {
    tell(error.what());
  }
}

void tidyHome(Files::Disk& disk, const fs::path& home, std::chrono::milliseconds longestWait,
              const std::function<void(const std::string&)>& tell) {
  completeImport(disk, home, longestWait, tell);
  try {
    const fs::path folders[] = {home, home / "profile", home / "presets"};
    const bool isTidy =
        std::ranges::none_of(folders, [&](const auto& each) { return Files::hasTemporaries(disk, each); });
    const auto lock = isTidy ? std::nullopt : lockAtOnce(disk, home);
    if (!lock) return;
    for (const fs::path& folder : folders) Files::sweepTemporaries(disk, folder);
  } catch (const Files::DiskError& error) {
    tell(error.what());
  }
}

void tidyUserFolders(Files::Disk& disk, const Settings& settings, const fs::path& home) {
  std::vector<UserFolder> untidy;
  for (const UserFolder& folder : userFolders(disk, settings))
    tidy(folder, [&] {
      if (Files::hasTemporaries(disk, folder.path) || hasToPutBack(disk, folder.path)) untidy.push_back(folder);
    });
  if (untidy.empty()) return;
  const auto lock = lockAtOnce(disk, home);
  if (!lock) return;
  for (const UserFolder& folder : untidy) {
    Files::tryTo([&] { Files::sweepTemporaries(disk, folder.path); });
    tidy(folder, [&] { putAllBack(disk, folder.path); });
  }
}

bool isLocalData(const Settings& settings, const fs::path& path) {
  const fs::path folder = folderIn(settings, Formats::Setting::localDataPath);
  const fs::path inside = path.lexically_normal().lexically_relative(folder.lexically_normal());
  return !folder.empty() && !inside.empty() && *inside.begin() != "..";
}

}  // namespace Refhost
