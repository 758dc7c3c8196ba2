#include "host/documents/captured.h"

#include "files/whole_file.h"

#include <algorithm>

namespace Refhost {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view asideStart = ".kiln-aside-";
constexpr std::string_view newStart = ".kiln-new-";

bool isThere(Files::Disk& disk, const fs::path& file) { return disk.kind(file) == Files::EntryKind::file; }

fs::path beside(const fs::path& file, std::string_view start) {
  fs::path name = std::string(start);
  name += file.filename();
  return Files::folderOf(file) / name;
}

fs::path asideOf(const fs::path& file) { return beside(file, asideStart); }

// Marks an overlay that did not exist before, while it is written.
fs::path markOf(const fs::path& file) { return beside(file, newStart); }

// The file that a name in `folder` is about; empty for other names.
fs::path subjectOf(const fs::path& folder, const fs::path& name) {
  const std::string shown = Files::shownPath(name);
  for (const std::string_view start : {asideStart, newStart})
    if (shown.starts_with(start) && shown.size() > start.size())
      return folder / Files::pathFromText(Files::pathText(name).substr(start.size()));
  return {};
}

fs::path pictureOf(fs::path overlay) { return overlay.replace_extension(".bmp"); }

bool isPictureOfOverlay(Files::Disk& disk, fs::path file) {
  return file.extension() == ".bmp" && isThere(disk, file.replace_extension(".opa"));
}

void rename(Files::Disk& disk, const fs::path& from, const fs::path& to) {
  disk.replace(from, to);
  disk.syncFolder(Files::folderOf(to));
}

void removeIfThere(Files::Disk& disk, const fs::path& file) {
  if (disk.remove(file)) disk.syncFolder(Files::folderOf(file));
}

}  // namespace

bool isSetAside(Files::Disk& disk, const fs::path& file) { return isThere(disk, asideOf(file)); }

bool takeAway(Files::Disk& disk, const fs::path& file, bool isDestination) {
  if (isThere(disk, file) && (isDestination || isPictureOfOverlay(disk, file))) {
    rename(disk, file, asideOf(file));
    return true;
  }
  try {
    // What is set aside would come back at the next opening.
    const bool wasAside = isThere(disk, asideOf(file)) && disk.remove(asideOf(file));
    if (!disk.remove(file) && !wasAside) return false;
    disk.syncFolder(Files::folderOf(file));
  } catch (const Files::DiskError&) {
    // The first failure is reported, and opening the folder retries.
    Files::tryTo([&] { putBack(disk, file); });
    throw;
  }
  Files::tryTo([&] { removeIfThere(disk, asideOf(pictureOf(file))); });
  return true;
}

void writeCaptured(Files::Disk& disk, const fs::path& file, std::string_view bytes,
                   std::optional<std::string_view> picture) {
  try {
    if (picture) {
      for (const fs::path& old : {file, pictureOf(file)})
        if (isThere(disk, old)) rename(disk, old, asideOf(old));
      if (!isThere(disk, asideOf(file))) Files::replaceWhole(disk, markOf(file), {});
      Files::replaceWhole(disk, pictureOf(file), *picture);
    }
    Files::replaceWhole(disk, file, bytes);
  } catch (const Files::DiskError&) {
    Files::tryTo([&] {
      const bool wasThere = isThere(disk, file) || isThere(disk, asideOf(file));
      if (picture && !wasThere) removeIfThere(disk, pictureOf(file));
      putBack(disk, file);
    });
    throw;
  }
  Files::tryTo([&] { putBack(disk, file); });
}

void putBack(Files::Disk& disk, const fs::path& file) {
  const Files::EntryKind kind = disk.kind(file);
  if (kind != Files::EntryKind::none && kind != Files::EntryKind::file) return;  // somebody has put it there
  const fs::path picture = pictureOf(file);
  if (isThere(disk, markOf(file))) {
    if (!isThere(disk, file) && !isThere(disk, asideOf(file))) removeIfThere(disk, picture);
    removeIfThere(disk, markOf(file));
  }
  const bool isGone = !isThere(disk, file) && isThere(disk, asideOf(file));
  if (isThere(disk, asideOf(picture))) {
    // Restore the picture first: as long as the overlay is set aside, this step is repeated.
    if (isGone || (isThere(disk, file) && !isThere(disk, picture)))
      rename(disk, asideOf(picture), picture);
    else
      removeIfThere(disk, asideOf(picture));
  }
  if (isGone)
    rename(disk, asideOf(file), file);
  else
    removeIfThere(disk, asideOf(file));
}

void putAllBack(Files::Disk& disk, const fs::path& folder) {
  if (disk.kind(folder) != Files::EntryKind::folder) return;
  const std::vector<Files::Entry> entries = disk.entries(folder);
  std::optional<Files::DiskError> first;
  // Overlays restore their pictures too; other pictures belong to existing overlays.
  for (const bool isPictureTurn : {false, true})
    for (const Files::Entry& entry : entries) {
      fs::path file = subjectOf(folder, entry.name);
      if (file.empty()) continue;
      const bool isPicture = file.extension() == ".bmp";
      if (isPicture) file.replace_extension(".opa");
      if (isPicture != isPictureTurn) continue;
      try {
        putBack(disk, file);
      } catch (const Files::DiskError& problem) {
        if (!first) first = problem;
      }
    }
  if (first) throw Files::DiskError(*first);
}

bool hasToPutBack(Files::Disk& disk, const fs::path& folder) {
  if (disk.kind(folder) != Files::EntryKind::folder) return false;
  const std::vector<Files::Entry> entries = disk.entries(folder);
  return std::any_of(entries.begin(), entries.end(),
                     [&](const Files::Entry& entry) { return !subjectOf(folder, entry.name).empty(); });
}

}  // namespace Refhost
