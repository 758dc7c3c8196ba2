// The folders of the user's data, from the host settings.
#pragma once

#include "files/disk.h"
#include "host/model/settings.h"

namespace Refhost {

// Removes temporary files of crashed programs from the folders, and restores files that were set aside, unless another
// program is changing the home. Ignores errors.
void tidyUserFolders(Files::Disk& disk, const Settings& settings, const std::filesystem::path& home);

}  // namespace Refhost
