// Profiles: a user's settings, watermarks and overlays in one file. docs/profiles.md describes the file and the
// guarantees.
//
// An export first asks the plug-in for its files, then packs them. An import unpacks into a temporary folder, validates
// everything, and commits it to the home in one step; then the plug-in reads it. Packing, and importing files, may run
// on any thread while the home is not in use.
#pragma once

#include "files/home_lock.h"
#include "files/temporary_folder.h"
#include "host/preferences.h"
#include "host/profiles/archive.h"
#include "host/profiles/manifest.h"
#include "host/profiles/merge.h"

#include <filesystem>
#include <functional>
#include <string>

namespace Refhost {

enum class UserData { included, leftOut };

class ProfileExport {
 public:
  // Asks the plug-in to write its files into a temporary folder, and captures the property values. Throws
  // std::runtime_error, one sentence.
  ProfileExport(Preferences& preferences, UserData userData);

  // Packs everything into the file, which is replaced atomically; progress is in kilobytes. Throws std::runtime_error,
  // one sentence, and Stopped; the file is then unchanged.
  void pack(const std::filesystem::path& file, const Progress& progress) const;

 private:
  Files::TemporaryFolder folder;
};

// The home to import a profile into.
struct ProfileHome {
  // The home of open preferences.
  static ProfileHome of(Preferences& preferences);

  // A home that is not open, with folders at the default paths; the caller sets `translate`.
  static ProfileHome closed(const std::filesystem::path& home);

  std::filesystem::path home;
  std::filesystem::path watermarkFile;
  std::filesystem::path overlayFolder;

  // Resolves names of watermarks for display.
  Translate translate;

  // The settings file of a model, to which the profile's values are written. Empty when the caller applies the values.
  std::function<std::filesystem::path(const std::u16string& model)> settingsFile;

  // Takes a sentence for each value of the profile that is not taken. May be empty.
  std::function<void(const std::string& sentence)> tell = {};

  // Takes what the import changes, for undo; null when nobody needs to know.
  std::shared_ptr<FileChanges> changes = {};

  // The longest wait for other programs that are changing the home.
  std::chrono::milliseconds longestWait = Files::longestLockWait;
};

// Imports the profile's files into the home atomically: after an interruption the home is unchanged, or is complete
// once it is opened again. Returns the values, which refer to the home's watermarks and overlays, and to no other file.
// Progress is in kilobytes, and cannot stop the import once the home is being changed. Throws std::runtime_error, one
// sentence, and Stopped.
Manifest importProfile(Files::Disk& disk, const std::filesystem::path& file, const ProfileHome& home,
                       const Progress& progress);

}  // namespace Refhost
