// Captured jobs: an overlay file and its picture, NAME.opa and NAME.bmp, replaced and deleted together.
//
// The system replaces one file at a time. So that a crash leaves either both old files or both new ones, files that may
// still be needed are set aside under another name in the same folder:
//
//   - the overlay that a job will overwrite, from its removal until the new file and its picture are complete;
//   - the picture of an overlay that is being deleted, until the overlay is deleted.
//
// The overlay file decides: if it is missing, the old pair is restored; if it exists, files set aside are not needed,
// unless its picture is missing. The picture of an overlay that did not exist before is marked while it is written, so
// that it goes if the overlay does not come. When it cannot be determined whether a file exists, nothing is renamed or
// deleted.
//
// The functions are called under the home's lock.
#pragma once

#include "files/disk.h"

#include <optional>

namespace Refhost {

// Whether the file is not there, but set aside, until its replacement is complete or the folder is opened next.
bool isSetAside(Files::Disk& disk, const std::filesystem::path& file);

// Deletes a file on behalf of a plug-in; false when there is none. Sets it aside instead when it is a destination, or
// the picture of an existing overlay. Throws Files::DiskError.
bool takeAway(Files::Disk& disk, const std::filesystem::path& file, bool isDestination);

// Writes a captured job to its destination; without a picture the existing one is kept. On failure throws
// Files::DiskError and restores the old overlay.
void writeCaptured(Files::Disk& disk, const std::filesystem::path& file, std::string_view bytes,
                   std::optional<std::string_view> picture);

// Restores what was set aside for a destination that will not be written. Throws Files::DiskError.
void putBack(Files::Disk& disk, const std::filesystem::path& file);

// Restores everything that was set aside in a folder, and removes the pictures of overlays that did not come, by any
// process. Called when the folder is opened. Throws the first Files::DiskError after it has restored what can be
// restored; the rest stays set aside.
void putAllBack(Files::Disk& disk, const std::filesystem::path& folder);

// Whether putAllBack has something to do. Throws Files::DiskError.
bool hasToPutBack(Files::Disk& disk, const std::filesystem::path& folder);

}  // namespace Refhost
