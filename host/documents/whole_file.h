// Files that are replaced whole or not at all.
//
// The bytes go to a temporary file in the same folder, are flushed to the medium, and take the old file's place by
// renaming; then the folder is flushed. Whenever the power fails, the old content or the new one is there.
#pragma once

#include "host/documents/disk.h"

namespace Refhost {

// Makes `bytes` the content of `path`, on the medium when it returns. False when that was its content already, in which
// case nothing is written. On failure throws DiskError, and `path` is as it was; only when the very last step failed,
// the flush of the folder, it has the new content, which may still be lost.
bool replaceWhole(Disk& disk, const std::filesystem::path& path, std::string_view bytes);

// Removes from `folder` the temporary files that programs have left behind which died while writing. Called when a
// folder is opened; what cannot be removed stays, and a folder that is not there is none to sweep.
void sweepTemporaries(Disk& disk, const std::filesystem::path& folder);

}  // namespace Refhost
