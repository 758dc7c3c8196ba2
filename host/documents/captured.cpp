#include "host/documents/captured.h"

#include "host/documents/whole_file.h"

namespace Refhost {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view asideStart = ".kiln-aside-";

bool isThere(Disk& disk, const fs::path& file) { return disk.kind(file) == EntryKind::file; }

fs::path asideOf(const fs::path& file) {
  fs::path name = std::string(asideStart);
  name += file.filename();
  return folderOf(file) / name;
}

fs::path pictureOf(fs::path overlay) { return overlay.replace_extension(".bmp"); }

bool isPictureOfOverlay(Disk& disk, fs::path file) {
  return file.extension() == ".bmp" && isThere(disk, file.replace_extension(".opa"));
}

void rename(Disk& disk, const fs::path& from, const fs::path& to) {
  disk.replace(from, to);
  disk.syncFolder(folderOf(to));
}

void removeIfThere(Disk& disk, const fs::path& file) {
  if (disk.remove(file)) disk.syncFolder(folderOf(file));
}

// Ignores failures: the first one is reported, and opening the folder retries.
template <class Work>
void tryTo(const Work& work) {
  try {
    work();
  } catch (const DiskError&) {
  }
}

}  // namespace

bool takeAway(Disk& disk, const fs::path& file, bool isDestination) {
  if (isThere(disk, file) && (isDestination || isPictureOfOverlay(disk, file))) {
    rename(disk, file, asideOf(file));
    return true;
  }
  try {
    if (!disk.remove(file)) return false;
    disk.syncFolder(folderOf(file));
  } catch (const DiskError&) {
    tryTo([&] { putBack(disk, file); });
    throw;
  }
  tryTo([&] { removeIfThere(disk, asideOf(pictureOf(file))); });
  return true;
}

void writeCaptured(Disk& disk, const fs::path& file, std::string_view bytes, std::optional<std::string_view> picture) {
  try {
    if (picture) {
      for (const fs::path& old : {file, pictureOf(file)})
        if (isThere(disk, old)) rename(disk, old, asideOf(old));
      replaceWhole(disk, pictureOf(file), *picture);
    }
    replaceWhole(disk, file, bytes);
  } catch (const DiskError&) {
    tryTo([&] {
      const bool wasThere = isThere(disk, file) || isThere(disk, asideOf(file));
      if (picture && !wasThere) removeIfThere(disk, pictureOf(file));
      putBack(disk, file);
    });
    throw;
  }
  tryTo([&] { putBack(disk, file); });
}

void putBack(Disk& disk, const fs::path& file) {
  const fs::path picture = pictureOf(file);
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

void putAllBack(Disk& disk, const fs::path& folder) {
  if (disk.kind(folder) != EntryKind::folder) return;
  tryTo([&] {
    const std::vector<Entry> entries = disk.entries(folder);
    // Overlays restore their pictures too; other pictures belong to existing overlays.
    for (const bool isPictureTurn : {false, true})
      for (const Entry& entry : entries) {
        if (!shownPath(entry.name).starts_with(asideStart)) continue;
        fs::path file = folder / pathFromText(pathText(entry.name).substr(asideStart.size()));
        const bool isPicture = file.extension() == ".bmp";
        if (isPicture) file.replace_extension(".opa");
        if (isPicture == isPictureTurn) tryTo([&] { putBack(disk, file); });
      }
  });
}

}  // namespace Refhost
