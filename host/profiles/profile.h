// Profiles: all that a person has set and made, in one file that can be mailed. docs/profiles.md tells of the file, and
// of what is promised about it.
//
// An export begins with the plug-in, which is asked for the files that it keeps, and ends with the packing. An import
// unpacks into a folder of its own, checks everything, and puts it into the home in one step; then the plug-in takes it
// up. Packing and importing files may run on any thread, while nobody works in the home.
#pragma once

#include "host/preferences.h"
#include "host/profiles/archive.h"
#include "host/profiles/manifest.h"
#include "host/profiles/merge.h"
#include "host/temporary_folder.h"

#include <filesystem>
#include <functional>
#include <string>

namespace Refhost {

enum class UserData { included, leftOut };

class ProfileExport {
 public:
  // Has the plug-in write what it keeps into a temporary folder, and notes the property values. Throws
  // std::runtime_error, one sentence.
  ProfileExport(Preferences& preferences, UserData userData);

  // Packs it into the file, which is replaced whole; progress is in kilobytes. Throws std::runtime_error, one sentence,
  // and Stopped; the file is as it was then.
  void pack(const std::filesystem::path& file, const Progress& progress) const;

 private:
  TemporaryFolder folder;
};

// The home that a profile is imported into.
struct ProfileHome {
  // What the preferences have open.
  static ProfileHome of(Preferences& preferences);

  // A home that nobody has open, with its folders in the usual places; `translate` is left to the caller.
  static ProfileHome closed(const std::filesystem::path& home);

  std::filesystem::path home;
  std::filesystem::path watermarkFile;
  std::filesystem::path overlayFolder;

  // Tells names of watermarks as the user sees them.
  Translate translate;

  // The file that keeps a model's settings for the next opening; it takes the profile's values along. Empty where the
  // caller sees to the values.
  std::function<std::filesystem::path(const std::u16string& model)> settingsFile;
};

// Puts what the profile brings into the home, whole or not at all: whenever this ends early, the home is as it was, or
// as it is after the import once somebody opens it. Gives the values, naming the home's watermarks and overlays.
// Progress is in kilobytes, and stops nothing any more once the home changes. Throws std::runtime_error, one sentence,
// and Stopped.
Manifest importProfile(Disk& disk, const std::filesystem::path& file, const ProfileHome& home,
                       const Progress& progress);

}  // namespace Refhost
