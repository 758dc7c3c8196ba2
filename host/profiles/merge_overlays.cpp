#include "formats/overlay_index.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/profiles/archive_names.h"
#include "host/profiles/merge.h"

#include <set>

namespace Refhost {
namespace {

namespace fs = std::filesystem;

using Formats::IndexEntry;
using Formats::overlayIndexName;
using Formats::overlayNameUnits;
using Formats::thumbnailOf;

constexpr std::size_t indexLimit = std::size_t{64} << 20;
constexpr std::size_t fileLimit = std::size_t{1} << 30;

fs::path fileIn(const fs::path& folder, std::u16string_view name) { return folder / Files::pathFromText(name); }

std::vector<IndexEntry> readIndex(Files::Disk& disk, const fs::path& folder) {
  const fs::path index = fileIn(folder, overlayIndexName);
  if (disk.kind(index) == Files::EntryKind::none) return {};
  return Formats::readIndex(disk.read(index, indexLimit));
}

class OverlayMerge {
 public:
  OverlayMerge(Files::Disk& filesDisk, const fs::path& homeFolder, const fs::path& profileFolder)
      : disk(filesDisk),
        home(homeFolder),
        profile(profileFolder),
        entries(readIndex(disk, home)) {
    for (const IndexEntry& entry : entries) {
      take(entry.fileName);
      take(thumbnailOf(entry.fileName));
      // Of entries with the same name the last one wins; entries without a file are ignored.
      if (isFile(fileIn(home, entry.fileName))) known[entry.name] = {entry.fileName, home, entry.fileName};
    }
    if (disk.kind(home) != Files::EntryKind::folder) return;
    for (const Files::Entry& entry : disk.entries(home)) take(Files::pathText(entry.name));
  }

  void add(const IndexEntry& overlay) {
    std::u16string name = overlay.name;
    for (int number = 2;; ++number) {
      const auto same = known.find(name);
      if (same == known.end()) return append(overlay.fileName, name);
      if (isSame(same->second, overlay.fileName)) return note(overlay.fileName, same->second.inHome);
      name = numbered(overlay.name, number, overlayNameUnits);
    }
  }

  MergedOverlays result() {
    merged.index = Formats::indexBytes(entries);
    return std::move(merged);
  }

 private:
  // An overlay of the home after the merge, and the current location of its file.
  struct Overlay {
    std::u16string inHome;
    fs::path folder;
    std::u16string file;
  };

  void take(const std::u16string& file) { taken.insert(withoutCase(Formats::toUtf8(file))); }
  bool isTaken(const std::u16string& file) const { return taken.contains(withoutCase(Formats::toUtf8(file))); }
  bool isFile(const fs::path& file) const { return disk.kind(file) == Files::EntryKind::file; }

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
    std::erase_if(entries, [&](const IndexEntry& entry) { return entry.name == name; });  // entries without a file
    entries.push_back({name, file});
    known[name] = {file, profile, inProfile};
  }

  void copy(std::u16string_view from, const std::u16string& to) {
    merged.files.emplace_back(fileIn(profile, from), to);
    take(to);
  }

  void note(const std::u16string& inProfile, const std::u16string& inHome) { merged.names[inProfile] = inHome; }

  // The file's own name, or the next free one in the plug-in's scheme.
  std::u16string freeName(const std::u16string& file) const {
    const auto isFree = [this](const std::u16string& name) { return !isTaken(name) && !isTaken(thumbnailOf(name)); };
    if (isFree(file)) return file;
    for (unsigned number = 0; number < Formats::overlayFileNumbers; ++number) {
      if (std::u16string name = Formats::overlayFileName(number); isFree(name)) return name;
    }
    throw Files::DiskError(Formats::sentence(
        "The folder {1} has no name left for another overlay; delete files from it.", Files::shownPath(home)));
  }

  Files::Disk& disk;
  const fs::path& home;
  const fs::path& profile;
  std::vector<IndexEntry> entries;
  std::map<std::u16string, Overlay> known;  // by displayed name
  std::set<std::string> taken;              // file names, in lower case
  MergedOverlays merged;
};

}  // namespace

MergedOverlays mergeOverlays(Files::Disk& disk, const fs::path& homeFolder, const fs::path& profileFolder) {
  OverlayMerge merge(disk, homeFolder, profileFolder);
  for (const IndexEntry& overlay : readIndex(disk, profileFolder)) merge.add(overlay);
  return merge.result();
}

}  // namespace Refhost
