// Paths as plug-ins hold them.
#pragma once

#include "host/documents/disk.h"
#include "host/trace.h"
#include "kiln/services.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace Refhost {

// Where a plug-in's file operations go, and who is told of them.
struct FileWorld {
  Disk& disk;
  const Trace& trace;

  // Paths inside this folder are told relative to it.
  std::filesystem::path home;

  // Whether the driver is to write a file there (host/documents/captured.h); empty where there is no driver.
  std::function<bool(const std::filesystem::path&)> isDestination = {};
};

// `world` outlives the path and all paths made from it. The path's text has the platform's own separators.
//
// Listings are in the order of the names' 16-bit units, and leave out links to folders: whoever walks through folders
// stays inside them.
Kiln::SmartPtr<Kiln::Services::Path> makePath(const FileWorld& world, std::filesystem::path path);

// What one of this host's paths stands for.
std::filesystem::path nativePath(Kiln::Services::Path& path);

// A path as the trace tells it: with "/" on every system, relative to the home where it lies inside.
std::u16string tracedPath(const FileWorld& world, const std::filesystem::path& path);

// Makes `bytes` the content of the file, and tells the trace; false, and nothing is told, when that was its content.
// Throws Exception.
bool saveTraced(const FileWorld& world, const std::filesystem::path& path, std::string_view bytes);

// Whether a name fits a pattern, in which * stands for any units and ? for any one.
bool fits(std::u16string_view name, std::u16string_view pattern);

}  // namespace Refhost
