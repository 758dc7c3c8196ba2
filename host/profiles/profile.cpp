#include "host/profiles/profile.h"

#include "host/documents/documents.h"
#include "host/documents/file_set.h"
#include "host/kept_settings.h"
#include "host/profiles/home_import.h"
#include "host/profiles/overlay_index.h"
#include "host/profiles/references.h"
#include "host/unicode.h"

#include <fstream>
#include <set>
#include <stdexcept>

namespace Refhost {
namespace {

namespace fs = std::filesystem;

// The plug-in's files, relative to a profile's folder or to local data.
constexpr std::string_view watermarkName = "ZVeffect.xml";
constexpr std::string_view overlayFolderName = "overlays";

constexpr ArchiveLimits limits;

// An unpacked and validated profile.
class Unpacked {
 public:
  Unpacked(Disk& filesDisk, const fs::path& profileFile, const Progress& progress)
      : disk(filesDisk),
        file(profileFile) {
    unpack(file, folder.path(), limits, progress);
    try {
      manifest = contentsOf(folder.path() / manifestName);
      demandKnownFiles();
      const fs::path path = folder.path() / watermarkName;
      if (disk.kind(path) != EntryKind::none) records = readWatermarks(bytesOf(path), std::string(watermarkName));
    } catch (const std::exception& error) {
      throw std::runtime_error(shownPath(file) + " is refused as a profile: " + error.what());
    }
  }

  const Manifest& contents() const { return manifest; }
  fs::path overlays() const { return folder.path() / overlayFolderName; }

  // Null when the profile has none.
  const Kiln::SmartPtr<Node>& watermarks() const { return records; }

  std::string bytesOf(const fs::path& path) const {
    return disk.read(path, static_cast<std::size_t>(limits.fileBytes));
  }

 private:
  Manifest contentsOf(const fs::path& path) const {
    if (disk.kind(path) != EntryKind::file) throw std::runtime_error("it has no profile.xml.");
    return readManifest(bytesOf(path));
  }

  // Rejects files that an import would ignore, and index entries without a file.
  void demandKnownFiles() const {
    std::set<std::u16string> known = {u"profile.xml", u"ZVeffect.xml"};
    const auto in = [](std::u16string_view name) { return u"overlays/" + std::u16string(name); };
    const fs::path index = overlays() / pathFromText(overlayIndexName);
    if (disk.kind(index) == EntryKind::file) {
      known.insert(in(overlayIndexName));
      for (const OverlayEntry& entry : readOverlayIndex(bytesOf(index))) {
        const bool isPlain = !entry.file.empty() && entry.file.find_first_of(u"/\\:") == entry.file.npos;
        if (!isPlain || disk.kind(overlays() / pathFromText(entry.file)) != EntryKind::file)
          throw std::runtime_error("it has no file for its overlay \"" + toNarrow(entry.name) + "\".");
        known.insert({in(entry.file), in(thumbnailOf(entry.file))});
      }
    }
    for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
      const fs::path inside = entry.path().lexically_relative(folder.path());
      const std::u16string name = pathText(inside.generic_string<fs::path::value_type>());
      if (!entry.is_directory() && !known.contains(name))
        throw std::runtime_error("its file \"" + toNarrow(name) + "\" belongs to no profile.");
    }
  }

  Disk& disk;
  const fs::path& file;
  TemporaryFolder folder;
  Manifest manifest;
  Kiln::SmartPtr<Node> records;
};

// The new contents of the home's files.
class HomeImport {
 public:
  HomeImport(Disk& filesDisk, const ProfileHome& intoHome, const Unpacked& profile, const Progress& toTell)
      : disk(filesDisk),
        home(intoHome),
        unpacked(profile),
        progress(toTell),
        files(disk, importJournal(home.home)),
        manifest(profile.contents()) {}

  Manifest run() {
    const Renamed watermarks = addWatermarks();
    const Renamed overlays = addOverlays();
    rename(manifest.values, watermarks, overlays, home.overlayFolder);
    if (home.settingsFile) write(home.settingsFile(manifest.model), settingsBytes(manifest.values));
    files.commit();
    return manifest;
  }

 private:
  Renamed addWatermarks() {
    const auto added = unpacked.watermarks();
    if (!added) return {};
    const MergedWatermarks merged = mergeWatermarks(presentWatermarks(), *added, home.translate);
    if (merged.file) write(home.watermarkFile, *merged.file);
    return merged.ids;
  }

  // Null when there are none.
  Kiln::SmartPtr<Node> presentWatermarks() const {
    if (disk.kind(home.watermarkFile) == EntryKind::none) return {};
    const std::string bytes = disk.read(home.watermarkFile, documentLimits.bytes);
    try {
      return readWatermarks(bytes, shownPath(home.watermarkFile));
    } catch (const std::runtime_error& error) {
      throw std::runtime_error(std::string(error.what()) +
                               " Open the preferences, which puts the file aside, and import again.");
    }
  }

  Renamed addOverlays() {
    if (disk.kind(unpacked.overlays()) == EntryKind::none) return {};
    const MergedOverlays merged = mergeOverlays(disk, home.overlayFolder, unpacked.overlays());
    int done = 0;
    for (const auto& [source, name] : merged.files) {
      if (!progress(done++, static_cast<int>(merged.files.size()))) throw Stopped();
      write(home.overlayFolder / pathFromText(name), unpacked.bytesOf(source));
    }
    if (!merged.files.empty()) write(home.overlayFolder / pathFromText(overlayIndexName), merged.index);
    return merged.names;
  }

  void write(const fs::path& path, std::string_view bytes) {
    createFolders(disk, folderOf(path));
    files.write(path, bytes);
  }

  Disk& disk;
  const ProfileHome& home;
  const Unpacked& unpacked;
  const Progress& progress;
  FileSet files;
  Manifest manifest;
};

}  // namespace

ProfileExport::ProfileExport(Preferences& preferences, UserData userData) {
  preferences.exportProfile(folder.path(), userData == UserData::included ? u"True" : u"False");
  Manifest manifest;
  const PropertyModel& model = preferences.model();
  manifest.model = model.description().name;
  for (const auto& [name, value] : model.values())
    if (!model.isContext(name)) manifest.values.emplace_back(name, value);
  replaceWhole(realDisk(), folder.path() / manifestName, manifestBytes(manifest));
}

void ProfileExport::pack(const fs::path& file, const Progress& progress) const {
  Refhost::pack(realDisk(), folder.path(), manifestName, file, limits, progress);
}

ProfileHome ProfileHome::of(Preferences& preferences) {
  const auto folder = [&](std::u16string_view key) { return pathFromText(preferences.setting(key).value_or(u"")); };
  ProfileHome home;
  home.home = preferences.home();
  home.watermarkFile = folder(u"kilnworks.user.path") / watermarkName;
  home.overlayFolder = folder(u"kilnworks.user.userprofile") / folder(u"kilnworks.pdlsettings.folder");
  home.translate = [&preferences](std::u16string_view text) { return preferences.strings().resolve(text); };
  return home;
}

ProfileHome ProfileHome::closed(const fs::path& home) {
  return {home, home / "user" / watermarkName, home / "profile" / overlayFolderName, {}, {}};
}

Manifest importProfile(Disk& disk, const fs::path& file, const ProfileHome& home, const Progress& progress) {
  const Unpacked unpacked(disk, file, progress);
  completeFileSet(disk, importJournal(home.home));
  return HomeImport(disk, home, unpacked, progress).run();
}

}  // namespace Refhost
