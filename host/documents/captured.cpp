#include "host/documents/captured.h"

#include "files/whole_file.h"

namespace Refhost {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view asideStart = ".kiln-aside-";

bool isThere(Files::Disk& disk, const fs::path& file) { return disk.kind(file) == Files::EntryKind::file; }

fs::path asideOf(const fs::path& file) {
  fs::path name = std::string(asideStart);
  name += file.filename();
  return Files::folderOf(file) / name;
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

// Ignores failures: the first one is reported, and opening the folder retries.
template <class Work>
void tryTo(const Work& work) {
  try {
    work();
  } catch (const Files::DiskError&) {
  }
}

}  // namespace

bool takeAway(Files::Disk& disk, const fs::path& file, bool isDestination) {
  if (isThere(disk, file) && (isDestination || isPictureOfOverlay(disk, file))) {
    rename(disk, file, asideOf(file));
    return true;
  }
  try {
    if (!disk.remove(file)) return false;
    disk.syncFolder(Files::folderOf(file));
  } catch (const Files::DiskError&) {
    tryTo([&] { putBack(disk, file); });
    throw;
  }
  tryTo([&] { removeIfThere(disk, asideOf(pictureOf(file))); });
  return true;
}

void writeCaptured(Files::Disk& disk, const fs::path& file, std::string_view bytes,
                   std::optional<std::string_view> picture) {
  try {
    if (picture) {
      for (const fs::path& old : {file, pictureOf(file)})
        if (isThere(disk, old)) rename(disk, old, asideOf(old));
      Files::replaceWhole(disk, pictureOf(file), *picture);
    }
    Files::replaceWhole(disk, file, bytes);
  } catch (const Files::DiskError&) {
    tryTo([&] {
      const bool wasThere = isThere(disk, file) || isThere(disk, asideOf(file));
      if (picture && !wasThere) removeIfThere(disk, pictureOf(file));
      putBack(disk, file);
    });
    throw;
  }
  tryTo([&] { putBack(disk, file); });
}

void putBack(Files::Disk& disk, const fs::path& file) {
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

void putAllBack(Files::Disk& disk, const fs::path& folder) {
  if (disk.kind(folder) != Files::EntryKind::folder) return;
  tryTo([&] {
    const std::vector<Files::Entry> entries = disk.entries(folder);
    // Overlays restore their pictures too; other pictures belong to existing overlays.
    for (const bool isPictureTurn : {false, true})
      for (const Files::Entry& entry : entries) {
        if (!Files::shownPath(entry.name).starts_with(asideStart)) continue;
        fs::path file = folder / Files::pathFromText(Files::pathText(entry.name).substr(asideStart.size()));
        const bool isPicture = file.extension() == ".bmp";
        if (isPicture) file.replace_extension(".opa");
        if (isPicture == isPictureTurn) tryTo([&] { putBack(disk, file); });
      }
  });
}

}  // namespace Refhost
