// What a user's OK keeps for the next opening: one file a model, home/profile/settings-MODEL.json.
#pragma once

#include "host/model/description.h"
#include "host/trace.h"

#include <filesystem>
#include <string>

namespace Refhost {

// Where a model's settings are kept below `home`; any name makes a plain file name.
std::filesystem::path settingsFile(const std::filesystem::path& home, const std::u16string& model);

struct KeptSettings {
  // By property name.
  TracePairs values;

  // Where a damaged file was put out of the way; empty when there was none.
  std::filesystem::path setAside;
};

// The settings kept in `file`; none when there is no such file. Throws std::runtime_error, one sentence, when the file
// cannot be read, or cannot be put out of the way.
KeptSettings readSettings(const std::filesystem::path& file);

// The content of such a file; the same values give the same bytes. What UTF-8 cannot carry becomes U+FFFD.
std::string settingsBytes(const TracePairs& values);

// Replaces the file whole, or leaves it as it was and throws std::runtime_error: one sentence.
void writeSettings(const std::filesystem::path& file, const TracePairs& values);

// Of `values` those that a user may set on that model.
TracePairs applicable(const TracePairs& values, const ModelDescription& model);

}  // namespace Refhost
