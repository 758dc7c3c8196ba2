// How what a profile brings comes to what a home has: nothing of the home changes. What both have is not taken twice,
// and where both have something of one name that is not the same, the profile's gets a number behind its name.
#pragma once

#include "host/documents/disk.h"
#include "host/documents/node.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

// What a profile calls by a name that is another in the home.
using Renamed = std::map<std::u16string, std::u16string>;

// The text of a string-table reference; any other text as it is.
using Translate = std::function<std::u16string(std::u16string_view)>;

struct MergedWatermarks {
  // The new content of the home's file; nothing when it has all.
  std::optional<std::string> file;

  // By the names of the elements in the profile's file.
  Renamed ids;
};

// The records of a watermark file. Throws std::runtime_error: one sentence with source and line.
Kiln::SmartPtr<Node> readWatermarks(std::string_view bytes, const std::string& source);

// A home's records, null for none, and a profile's.
MergedWatermarks mergeWatermarks(Kiln::SmartPtr<Node> home, Node& profile, const Translate& translate);

struct MergedOverlays {
  // The new content of the home's index, and the files of the profile's folder that come into the home's, with their
  // names there. No files: the home has all.
  std::string index;
  std::vector<std::pair<std::filesystem::path, std::u16string>> files;

  // By file name.
  Renamed names;
};

// Throws DiskError.
MergedOverlays mergeOverlays(Disk& disk, const std::filesystem::path& homeFolder,
                             const std::filesystem::path& profileFolder);

// `name` with a number from 2 on behind it, no longer than `units`.
std::u16string numbered(std::u16string_view name, int number, std::size_t units);

}  // namespace Refhost
