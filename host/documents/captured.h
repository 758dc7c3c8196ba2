// Captured jobs: an overlay file and its picture beside it, NAME.opa and NAME.bmp, which come and go together.
//
// The system replaces one file at a time. So that both are the old ones or both are the new ones whenever the process
// dies, what may still be needed is set aside, under a name of its own in the same folder:
//
//   - the file that a job is to be captured into, from its removal on, until the new file and its picture are whole;
//   - the picture of an overlay that is being deleted, until the overlay is gone.
//
// The overlay decides: where it is missing, the old pair is put back; where it is there, what is aside is not needed,
// unless its picture is missing.
#pragma once

#include "host/documents/disk.h"

#include <optional>

namespace Refhost {

// Deletes a file, for a plug-in; false when there was none. A destination is set aside instead, and so is the picture
// of an overlay that is there. Throws DiskError.
bool takeAway(Disk& disk, const std::filesystem::path& file, bool isDestination);

// Writes a captured job into its destination; without a picture the one that is there stays. On failure throws
// DiskError, and the old overlay is there again.
void writeCaptured(Disk& disk, const std::filesystem::path& file, std::string_view bytes,
                   std::optional<std::string_view> picture);

// Puts back what was set aside for a destination that will not be written. Throws DiskError.
void putBack(Disk& disk, const std::filesystem::path& file);

// The same for all that is aside in a folder, whoever left it there. Called when the folder is opened; what cannot be
// put back stays aside.
void putAllBack(Disk& disk, const std::filesystem::path& folder);

}  // namespace Refhost
