// What a user's OK keeps for the next opening: one file a model, home/profile/settings-MODEL.json.
#pragma once

#include "host/model/description.h"
#include "host/trace.h"

#include <filesystem>
#include <string>

namespace Window {

// Where a model's settings are kept below `home`; any name makes a plain file name.
std::filesystem::path settingsFile(const std::filesystem::path& home, const std::u16string& model);

struct KeptSettings {
  // By property name.
  Refhost::TracePairs values;

  // Where a damaged file was put out of the way; empty when there was none.
  std::filesystem::path setAside;
};

// The settings kept in `file`; none when there is no such file. Throws std::runtime_error, one sentence, when the file
// cannot be read, or cannot be put out of the way.
KeptSettings readSettings(const std::filesystem::path& file);

// Replaces the file whole, or leaves it as it was and throws std::runtime_error: one sentence.
void writeSettings(const std::filesystem::path& file, const Refhost::TracePairs& values);

// Of `values` those that a user may set on that model.
Refhost::TracePairs applicable(const Refhost::TracePairs& values, const Refhost::ModelDescription& model);

}  // namespace Window
