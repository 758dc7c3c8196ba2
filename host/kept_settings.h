// Settings saved by OK for the next opening: one file per model, home/profile/settings-MODEL.json.
#pragma once

#include "files/disk.h"
#include "host/model/description.h"
#include "host/trace.h"

#include <filesystem>
#include <functional>
#include <string>

namespace Refhost {

// The path of a model's settings below `home`; any model name gives a valid file name.
std::filesystem::path settingsFile(const std::filesystem::path& home, const std::u16string& model);

struct KeptSettings {
  // By property name.
  TracePairs values;

  // Where a damaged file was moved; empty when there was none.
  std::filesystem::path setAside;
};

// The settings in `file`; none when there is no such file. First completes an import that was interrupted, as
// completeImport in host/user_folders.h does: the settings before it would be saved over those that it brings. Only a
// file that was read, and does not hold settings, is damaged; it is moved to FILE.damaged-N. Throws std::runtime_error,
// one sentence, when the file cannot be read, or is damaged and cannot be moved; it is then where it was.
KeptSettings readSettings(const std::filesystem::path& file, const std::function<void(const std::string&)>& tell,
                          Files::Disk& disk = Files::realDisk());

// The same without any change of the home: none when the file cannot be read now, or is damaged.
TracePairs peekAtSettings(const std::filesystem::path& file, Files::Disk& disk = Files::realDisk());

// The content of such a file; equal values give equal bytes. Characters that UTF-8 cannot represent become U+FFFD.
std::string settingsBytes(const TracePairs& values);

// Replaces the file atomically. Throws std::runtime_error, one sentence, and leaves it unchanged on failure.
void writeSettings(const std::filesystem::path& file, const TracePairs& values, Files::Disk& disk = Files::realDisk());

// The last of `values` for each property, in the model's order, without those that are the model's defaults.
TracePairs changedValues(const TracePairs& values, const ModelDescription& model);

// The subset of `values` that a user may set on that model.
TracePairs applicable(const TracePairs& values, const ModelDescription& model);

}  // namespace Refhost
