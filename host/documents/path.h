// Paths for plug-ins.
#pragma once

#include "files/disk.h"
#include "host/documents/change_guard.h"
#include "host/documents/file_changes.h"
#include "host/trace.h"
#include "kiln/services.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace Refhost {

// The environment of a plug-in's file operations.
struct FileWorld {
  Files::Disk& disk;
  const Trace& trace;

  // Paths inside this folder are traced relative to it.
  std::filesystem::path home;

  // Whether the driver will write the file (host/documents/captured.h); empty without a driver.
  std::function<bool(const std::filesystem::path&)> isDestination = {};

  // Called when the plug-in could not look at something or read it, before the plug-in gets the Exception, which it may
  // survive; empty when nobody needs to know.
  std::function<void(const std::filesystem::path&, const Files::DiskError&)> onUnread = {};

  // Why a folder of the home is missing, as one sentence; empty when all are there.
  std::string homeProblem = {};

  // Keeps its changes and those of other programs apart.
  std::shared_ptr<ChangeGuard> guard = std::make_shared<ChangeGuard>();

  // What the present action has changed; null when nobody needs to know.
  std::shared_ptr<FileChanges> changes = {};
};

// `world` outlives the path and all paths derived from it. The path's text uses the platform's separators.
//
// Listings are sorted by the names' 16-bit units. They omit links to folders on the way to the listed one, so that a
// recursive walk ends, and to folders that are listed already.
Kiln::SmartPtr<Kiln::Services::Path> makePath(const FileWorld& world, std::filesystem::path path);

// The file system path of one of this host's paths, which `operation` ("Host::file") was called with. Throws Exception
// for none, and for another's.
std::filesystem::path nativePath(const Kiln::SmartPtr<Kiln::Services::Path>& path, std::string_view operation);

// A path in the form of the trace: with "/" on every system, relative to the home if inside it.
std::u16string tracedPath(const FileWorld& world, const std::filesystem::path& path);

// Replaces the content of the file by `bytes` and traces it; false, without a trace, when the content is unchanged.
// Throws Exception; FileChanged when another program has changed the file since the plug-in has looked at it.
bool saveTraced(const FileWorld& world, const std::filesystem::path& path, std::string_view bytes);

// Whether a name matches a pattern, with * for any units and ? for exactly one.
bool fits(std::u16string_view name, std::u16string_view pattern);

}  // namespace Refhost
