// Files that are replaced whole or not at all.
//
// The bytes go to a temporary file in the same folder, are flushed to the medium, and take the old file's place by
// renaming; then the folder is flushed. Whenever the power fails, the old content or the new one is there.
#pragma once

#include "host/documents/disk.h"

#include <memory>

namespace Refhost {

// The new content of a file, on its way to taking the old one's place. Its temporary file goes with this object, unless
// it was put in place or left to somebody else. All operations throw DiskError; `disk` outlives the object.
class PendingFile {
 public:
  // Begins the new content of `path`, which stays as it is meanwhile.
  PendingFile(Disk& fileDisk, std::filesystem::path filePath);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  const std::filesystem::path& path() const { return target; }

  // In the same folder as `path`.
  const std::filesystem::path& temporary() const { return place; }

  void write(std::string_view bytes);

  // Returns when all that was written is on the medium. The name of the temporary file may still be lost.
  void finish();

  // After finish: the content becomes that of `path`, on the medium when it returns.
  void putInPlace();

  // From now on the temporary file stays whatever becomes of this object.
  void leave() { isOurs = false; }

 private:
  Disk& disk;
  std::filesystem::path target;
  std::filesystem::path place;
  std::unique_ptr<Disk::File> file;
  bool isOurs = true;
};

// Makes `bytes` the content of `path`, on the medium when it returns. False when that was its content already, in which
// case nothing is written. On failure throws DiskError, and `path` is as it was; only when the very last step failed,
// the flush of the folder, it has the new content, which may still be lost.
bool replaceWhole(Disk& disk, const std::filesystem::path& path, std::string_view bytes);

// Whether that is the content of the file now; false, too, for one that cannot be read.
bool holds(Disk& disk, const std::filesystem::path& path, std::string_view bytes);

// Makes a folder and those above it, each on the medium when it returns. Throws DiskError.
void createFolders(Disk& disk, const std::filesystem::path& folder);

// Removes from `folder` the temporary files that programs have left behind which died while writing. Called when a
// folder is opened; what cannot be removed stays, and a folder that is not there is none to sweep.
void sweepTemporaries(Disk& disk, const std::filesystem::path& folder);

}  // namespace Refhost
