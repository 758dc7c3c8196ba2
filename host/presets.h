// Presets: the settings of the preferences under a name, kept in the home.
//
// Each is one file, home/presets/preset-N.json, which has the name in it: names may have any characters.
// docs/presets.md describes them.
#pragma once

#include "files/disk.h"
#include "host/trace.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

struct Preset {
  std::u16string name;

  // The model that the values were set on.
  std::u16string model;
  TracePairs values;
};

class Presets {
 public:
  // The longest name, in UTF-16 units.
  static constexpr std::size_t longestName = 60;

  // `filesDisk` outlives the object.
  Presets(Files::Disk& filesDisk, const std::filesystem::path& home, std::chrono::milliseconds longestWaitForLock);

  // All presets by name. Takes a sentence for each file that cannot be read, which is left out.
  std::vector<Preset> read(const std::function<void(const std::string&)>& tell) const;

  // The operations below are done under the home's lock, and replace or delete one file. They throw std::runtime_error,
  // one sentence, and leave everything as it is on failure.

  // Replaces the preset with that name.
  void save(const Preset& preset) const;

  // Nobody else has the new name.
  void rename(std::u16string_view name, std::u16string_view newName) const;
  void remove(std::u16string_view name) const;

 private:
  struct Kept;

  std::vector<Kept> kept(const std::function<void(const std::string&)>& tell) const;
  Kept demand(std::u16string_view name) const;

  Files::Disk& disk;
  std::filesystem::path home;
  std::filesystem::path folder;
  std::chrono::milliseconds longestWait;
};

// Why a text cannot be the name of a preset, as one sentence; empty when it can.
std::string presetNameProblem(std::u16string_view name);

}  // namespace Refhost
