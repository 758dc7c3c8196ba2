// Merges a profile's watermarks and overlays into a home's, which stay unchanged. Identical entries are not duplicated;
// a different one with a taken name gets a number appended.
#pragma once

#include "files/disk.h"
#include "host/documents/node.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

// From a name in the profile to its name in the home.
using Renamed = std::map<std::u16string, std::u16string>;

// Resolves a string-table reference; returns other texts unchanged.
using Translate = std::function<std::u16string(std::u16string_view)>;

// A record's name, which is its text when it has none, and its id.
std::u16string nameOfRecord(Node& record);
std::u16string idOfRecord(Node& record);

// The content of a watermark file with the records, in its order.
std::string watermarkBytes(const Node& root);

struct MergedWatermarks {
  // The new content of the home's file; nothing when unchanged.
  std::optional<std::string> file;

  // By element names in the profile's file.
  Renamed ids;
};

// The records of a watermark file. Throws std::runtime_error: one sentence with source and line.
Kiln::SmartPtr<Node> readWatermarks(std::string_view bytes, const std::string& source);

// `home` are the home's records, null for none.
MergedWatermarks mergeWatermarks(Kiln::SmartPtr<Node> home, Node& profile, const Translate& translate);

struct MergedOverlays {
  // The new content of the home's index, and the files to copy from the profile's folder with their names in the home.
  // Without files the home is unchanged.
  std::string index;
  std::vector<std::pair<std::filesystem::path, std::u16string>> files;

  // Of all overlays of the profile, by file name.
  Renamed names;
};

// Throws Files::DiskError.
MergedOverlays mergeOverlays(Files::Disk& disk, const std::filesystem::path& homeFolder,
                             const std::filesystem::path& profileFolder);

// `name` with a number, from 2, appended, truncated to `units`.
std::u16string numbered(std::u16string_view name, int number, std::size_t units);

}  // namespace Refhost
