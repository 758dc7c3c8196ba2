// The home and the folders of the user's data, which the host settings name: what is done before they are read.
#pragma once

#include "files/disk.h"
#include "host/model/settings.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

namespace Refhost {

// Completes an import into the home that was interrupted; tells of one that never can be. Throws Files::DiskError when
// it cannot be completed now: what is saved meanwhile would be overwritten when it is.
void completeImport(Files::Disk& disk, const std::filesystem::path& home, std::chrono::milliseconds longestWait,
                    const std::function<void(const std::string&)>& tell);

// Called before any file of the home is read. Completes an import, as above, and removes temporary files of crashed
// programs, unless another program is changing the home; tells what is not done.
void tidyHome(Files::Disk& disk, const std::filesystem::path& home, std::chrono::milliseconds longestWait,
              const std::function<void(const std::string&)>& tell);

// Removes temporary files of crashed programs from the folders, and restores files that were set aside, unless another
// program is changing the home. Throws Files::DiskError when a file of the user's own, that may be set aside, cannot be
// restored for now: its overlay would look as if it was missing. Ignores other errors, and
// those of folders that nobody can write to.
void tidyUserFolders(Files::Disk& disk, const Settings& settings, const std::filesystem::path& home);

// Whether the path is the folder of local data, or leads into it.
bool isLocalData(const Settings& settings, const std::filesystem::path& path);

}  // namespace Refhost
