// The folders of the user's data, from the host settings.
#pragma once

#include "files/disk.h"
#include "host/model/settings.h"

namespace Refhost {

// Removes temporary files of crashed programs from the folders, and restores files that were set aside, unless another
// program is changing the home. Throws Files::DiskError when a file of the user's own, that may be set aside, cannot be
// restored for now: without it the indexes of overlays would be saved without its entry. Ignores other errors, and
// those of folders that nobody can write to.
void tidyUserFolders(Files::Disk& disk, const Settings& settings, const std::filesystem::path& home);

// Whether the path is the folder of local data, or leads into it.
bool isLocalData(const Settings& settings, const std::filesystem::path& path);

}  // namespace Refhost
