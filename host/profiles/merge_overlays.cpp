#include "host/profiles/archive_names.h"
#include "host/profiles/merge.h"
#include "host/profiles/overlay_index.h"
#include "host/unicode.h"

#include <cstdio>
#include <set>

namespace Refhost {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t indexLimit = std::size_t{64} << 20;
constexpr std::size_t fileLimit = std::size_t{1} << 30;
constexpr unsigned fileNumbers = 100'000;

fs::path fileIn(const fs::path& folder, std::u16string_view name) { return folder / pathFromText(name); }

std::vector<OverlayEntry> readIndex(Disk& disk, const fs::path& folder) {
  const fs::path index = fileIn(folder, overlayIndexName);
  if (disk.kind(index) == EntryKind::none) return {};
  return readOverlayIndex(disk.read(index, indexLimit));
}

class OverlayMerge {
 public:
  OverlayMerge(Disk& filesDisk, const fs::path& homeFolder, const fs::path& profileFolder)
      : disk(filesDisk),
        home(homeFolder),
        profile(profileFolder),
        entries(readIndex(disk, home)) {
    for (const OverlayEntry& entry : entries) {
      take(entry.file);
      take(thumbnailOf(entry.file));
      // Of entries with the same name the last one wins; entries without a file are ignored.
      if (isFile(fileIn(home, entry.file))) known[entry.name] = {entry.file, home, entry.file};
    }
    if (disk.kind(home) != EntryKind::folder) return;
    for (const Entry& entry : disk.entries(home)) take(pathText(entry.name));
  }

  void add(const OverlayEntry& overlay) {
    std::u16string name = overlay.name;
    for (int number = 2;; ++number) {
      const auto same = known.find(name);
      if (same == known.end()) return append(overlay.file, name);
      if (isSame(same->second, overlay.file)) return note(overlay.file, same->second.inHome);
      name = numbered(overlay.name, number, overlayNameUnits);
    }
  }

  MergedOverlays result() {
    merged.index = overlayIndexBytes(entries);
    return std::move(merged);
  }

 private:
  // An overlay of the home after the merge, and the current location of its file.
  struct Overlay {
    std::u16string inHome;
    fs::path folder;
    std::u16string file;
  };

  void take(const std::u16string& file) { taken.insert(withoutCase(toNarrow(file))); }
  bool isTaken(const std::u16string& file) const { return taken.contains(withoutCase(toNarrow(file))); }
  bool isFile(const fs::path& file) const { return disk.kind(file) == EntryKind::file; }

  bool isSame(const Overlay& overlay, std::u16string_view inProfile) const {
    return bytesOf(overlay.folder, overlay.file) == bytesOf(profile, inProfile) &&
           bytesOf(overlay.folder, thumbnailOf(overlay.file)) == bytesOf(profile, thumbnailOf(inProfile));
  }

  // Empty when there is no file.
  std::string bytesOf(const fs::path& folder, std::u16string_view name) const {
    const fs::path file = fileIn(folder, name);
    return isFile(file) ? disk.read(file, fileLimit) : std::string();
  }

  void append(const std::u16string& inProfile, const std::u16string& name) {
    const std::u16string file = freeName(inProfile);
    copy(inProfile, file);
    if (isFile(fileIn(profile, thumbnailOf(inProfile)))) copy(thumbnailOf(inProfile), thumbnailOf(file));
    note(inProfile, file);
    std::erase_if(entries, [&](const OverlayEntry& entry) { return entry.name == name; });  // entries without a file
    entries.push_back({name, file});
    known[name] = {file, profile, inProfile};
  }

  void copy(std::u16string_view from, const std::u16string& to) {
    merged.files.emplace_back(fileIn(profile, from), to);
    take(to);
  }

  void note(const std::u16string& inProfile, const std::u16string& inHome) {
    if (inProfile != inHome) merged.names[inProfile] = inHome;
  }

  // The file's own name, or the next free one in the plug-in's scheme.
  std::u16string freeName(const std::u16string& file) const {
    const auto isFree = [this](const std::u16string& name) { return !isTaken(name) && !isTaken(thumbnailOf(name)); };
    if (isFree(file)) return file;
    for (unsigned number = 0; number < fileNumbers; ++number) {
      char digits[16];
      std::snprintf(digits, sizeof digits, "%05u.opa", number);
      if (std::u16string name = toWide(digits); isFree(name)) return name;
    }
    throw DiskError("The folder " + shownPath(home) + " has no name left for another overlay; delete files from it.");
  }

  Disk& disk;
  const fs::path& home;
  const fs::path& profile;
  std::vector<OverlayEntry> entries;
  std::map<std::u16string, Overlay> known;  // by displayed name
  std::set<std::string> taken;              // file names, in lower case
  MergedOverlays merged;
};

}  // namespace

MergedOverlays mergeOverlays(Disk& disk, const fs::path& homeFolder, const fs::path& profileFolder) {
  OverlayMerge merge(disk, homeFolder, profileFolder);
  for (const OverlayEntry& overlay : readIndex(disk, profileFolder)) merge.add(overlay);
  return merge.result();
}

}  // namespace Refhost
