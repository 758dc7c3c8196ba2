#include "host/profiles/profile.h"

#include "files/file_set.h"
#include "files/home_lock.h"
#include "formats/overlay_index.h"
#include "formats/page_rules.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "formats/watermark_record.h"
#include "host/documents/documents.h"
#include "host/kept_settings.h"
#include "host/profiles/home_import.h"
#include "host/profiles/references.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <stdexcept>

namespace Refhost {
namespace {

namespace fs = std::filesystem;

// The plug-in's files, relative to a profile's folder or to local data.
constexpr std::string_view overlayFolderName = "overlays";

constexpr ArchiveLimits limits;

// An unpacked and validated profile.
class Unpacked {
 public:
  Unpacked(Files::Disk& filesDisk, const fs::path& profileFile, const Progress& progress)
      : disk(filesDisk),
        file(profileFile) {
    unpack(file, folder.path(), limits, progress);
    try {
      manifest = contentsOf(folder.path() / manifestName);
      demandKnownFiles();
      const fs::path path = folder.path() / Formats::watermarkFileName;
      if (disk.kind(path) != Files::EntryKind::none)
        records = readWatermarks(bytesOf(path), Formats::toUtf8(Formats::watermarkFileName));
    } catch (const std::exception& error) {
      throw std::runtime_error(
          Formats::sentence("{1} is refused as a profile: {2}", Files::shownPath(file), error.what()));
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
    if (disk.kind(path) != Files::EntryKind::file)
      throw std::runtime_error(Formats::sentence("it has no profile.xml."));
    return readManifest(bytesOf(path));
  }

  // Rejects files that an import would ignore, and index entries without a file.
  void demandKnownFiles() const {
    std::set<std::u16string> known = {u"profile.xml", std::u16string(Formats::watermarkFileName)};
    const auto in = [](std::u16string_view name) { return u"overlays/" + std::u16string(name); };
    const fs::path index = overlays() / Files::pathFromText(Formats::overlayIndexName);
    if (disk.kind(index) == Files::EntryKind::file) {
      known.insert(in(Formats::overlayIndexName));
      for (const Formats::IndexEntry& entry : Formats::readIndex(bytesOf(index))) {
        const bool isPlain = !entry.fileName.empty() && entry.fileName.find_first_of(u"/\\:") == entry.fileName.npos;
        if (!isPlain || disk.kind(overlays() / Files::pathFromText(entry.fileName)) != Files::EntryKind::file)
          throw std::runtime_error(
              Formats::sentence("it has no file for its overlay {1}.", Formats::quoted(Formats::toUtf8(entry.name))));
        known.insert({in(entry.fileName), in(Formats::thumbnailOf(entry.fileName))});
      }
    }
    for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
      const fs::path inside = entry.path().lexically_relative(folder.path());
      const std::u16string name = Files::pathText(inside.generic_string<fs::path::value_type>());
      if (!entry.is_directory() && !known.contains(name))
        throw std::runtime_error(
            Formats::sentence("its file {1} belongs to no profile.", Formats::quoted(Formats::toUtf8(name))));
    }
  }

  Files::Disk& disk;
  const fs::path& file;
  Files::TemporaryFolder folder;
  Manifest manifest;
  Kiln::SmartPtr<Node> records;
};

// The new contents of the home's files.
class HomeImport {
 public:
  HomeImport(Files::Disk& filesDisk, const ProfileHome& intoHome, const Unpacked& profile, const Progress& toTell)
      : disk(filesDisk),
        home(intoHome),
        unpacked(profile),
        progress(toTell),
        files(disk, importJournal(home.home)),
        manifest(profile.contents()) {}

  Manifest run() {
    const Renamed watermarks = addWatermarks();
    const Renamed overlays = addOverlays();
    const auto isInHome = [this](std::u16string_view name) {
      return disk.kind(home.overlayFolder / Files::pathFromText(name)) == Files::EntryKind::file;
    };
    const auto leftOut = rename(manifest.values, watermarks, {overlays, home.overlayFolder, isInHome});
    if (home.settingsFile) write(home.settingsFile(manifest.model), settingsBytes(manifest.values));
    files.commit();
    tell(leftOut);
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
    if (disk.kind(home.watermarkFile) == Files::EntryKind::none) return {};
    const std::string bytes = disk.read(home.watermarkFile, documentLimits.bytes);
    try {
      return readWatermarks(bytes, Files::shownPath(home.watermarkFile));
    } catch (const std::runtime_error& error) {
      throw std::runtime_error(
          Formats::sentence("{1} Open the preferences, which puts the file aside, and import again.", error.what()));
    }
  }

  Renamed addOverlays() {
    if (disk.kind(unpacked.overlays()) == Files::EntryKind::none) return {};
    const MergedOverlays merged = mergeOverlays(disk, home.overlayFolder, unpacked.overlays());
    int done = 0;
    for (const auto& [source, name] : merged.files) {
      if (!progress(done++, static_cast<int>(merged.files.size()))) throw Stopped();
      write(home.overlayFolder / Files::pathFromText(name), unpacked.bytesOf(source));
    }
    if (!merged.files.empty()) write(home.overlayFolder / Files::pathFromText(Formats::overlayIndexName), merged.index);
    return merged.names;
  }

  // A list may have any length; eight overlays are all that people can choose.
  void tell(const std::vector<std::u16string>& leftOut) const {
    constexpr std::size_t mostUnits = 200;
    if (!home.tell) return;
    for (std::size_t i = 0; i < std::min(leftOut.size(), Formats::slotCount); ++i)
      home.tell(
          Formats::sentence("The overlay {1} is not in the profile, and is left out: choose another one, or none.",
                            Formats::quoted(Formats::toUtf8(leftOut[i].substr(0, mostUnits)))));
  }

  void write(const fs::path& path, std::string_view bytes) {
    Files::createFolders(disk, Files::folderOf(path));
    if (home.changes) home.changes->add(path, home.changes->contentBefore(disk, path), std::string(bytes));
    files.write(path, bytes);
  }

  Files::Disk& disk;
  const ProfileHome& home;
  const Unpacked& unpacked;
  const Progress& progress;
  Files::FileSet files;
  Manifest manifest;
};

}  // namespace

ProfileExport::ProfileExport(Preferences& preferences, UserData userData) {
  preferences.exportProfile(folder.path(), userData == UserData::included ? std::u16string(Formats::Value::yes)
                                                                          : std::u16string(Formats::Value::no));
  Manifest manifest;
  const PropertyModel& model = preferences.model();
  manifest.model = model.description().name;
  for (const auto& [name, value] : model.values())
    if (!model.isContext(name)) manifest.values.emplace_back(name, value);
  Files::replaceWhole(Files::realDisk(), folder.path() / manifestName, manifestBytes(manifest));
}

void ProfileExport::pack(const fs::path& file, const Progress& progress) const {
  Refhost::pack(Files::realDisk(), folder.path(), manifestName, file, limits, progress);
}

ProfileHome ProfileHome::of(Preferences& preferences) {
  const auto folder = [&](std::u16string_view key) {
    return Files::pathFromText(preferences.setting(key).value_or(u""));
  };
  ProfileHome home;
  home.home = preferences.home();
  home.watermarkFile = folder(Formats::Setting::userPath) / Formats::watermarkFileName;
  home.overlayFolder = folder(Formats::Setting::userProfile) / folder(Formats::Setting::settingsFolder);
  home.changes = std::make_shared<FileChanges>();
  home.translate = [&preferences](std::u16string_view text) { return preferences.strings().resolve(text); };
  return home;
}

ProfileHome ProfileHome::closed(const fs::path& home) {
  ProfileHome closed;
  closed.home = home;
  closed.watermarkFile = home / "user" / Formats::watermarkFileName;
  closed.overlayFolder = home / "profile" / overlayFolderName;
  return closed;
}

Manifest importProfile(Files::Disk& disk, const fs::path& file, const ProfileHome& home, const Progress& progress) {
  const Unpacked unpacked(disk, file, progress);
  Files::createPrivateFolder(disk, home.home);
  const Files::HomeLock lock(disk, home.home, home.longestWait);
  Files::completeFileSet(disk, importJournal(home.home));
  return HomeImport(disk, home, unpacked, progress).run();
}

}  // namespace Refhost
