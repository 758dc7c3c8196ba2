// Atomic file replacement.
//
// The bytes go to a temporary file in the same folder, are flushed to the storage medium, and replace the old file by
// renaming; then the folder is flushed. After a power loss the file has its old or its new content.
#pragma once

#include "files/disk.h"

#include <memory>

namespace Files {

// The new content of a file before it replaces the old one. The destructor removes the temporary file, unless it was
// put in place or released. All operations throw DiskError; `disk` outlives the object.
class PendingFile {
 public:
  // Creates the temporary file for `path`, which is unchanged for now.
  PendingFile(Disk& fileDisk, std::filesystem::path filePath);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  const std::filesystem::path& path() const { return target; }

  // In the same folder as `path`.
  const std::filesystem::path& temporary() const { return place; }

  void write(std::string_view bytes);

  // Returns when everything written is on the storage medium. The temporary file's name may still be lost.
  void finish();

  // Call after finish: replaces `path`; the new content is on the storage medium when it returns.
  void putInPlace();

  // Releases the temporary file: the destructor no longer removes it.
  void leave() { isOurs = false; }

 private:
  Disk& disk;
  std::filesystem::path target;
  std::filesystem::path place;
  std::unique_ptr<Disk::File> file;
  bool isOurs = true;
};

// Replaces the content of `path` by `bytes`, durably. False, without writing, when the content is unchanged. On
// DiskError `path` is unchanged; only if the last step, the flush of the folder, fails, it has the new content, which
// may still be lost.
bool replaceWhole(Disk& disk, const std::filesystem::path& path, std::string_view bytes);

// The file that a link leads to, for those who write through links; another path unchanged. Throws DiskError.
std::filesystem::path linkTarget(const std::filesystem::path& path);

// Whether the file has that content; false for an unreadable file.
bool holds(Disk& disk, const std::filesystem::path& path, std::string_view bytes);

// Creates a folder and its parents durably. Throws DiskError.
void createFolders(Disk& disk, const std::filesystem::path& folder);

// The same for a folder that only this user can enter; a folder that exists is left as it is.
void createPrivateFolder(Disk& disk, const std::filesystem::path& folder);

// The first of `start`1, `start`2 ... that is not there yet. Throws DiskError.
std::filesystem::path firstFree(Disk& disk, const std::filesystem::path& start);

// Whether the name is one that a PendingFile gives its temporary file.
bool isTemporaryName(const std::filesystem::path& name);

// Whether the folder has temporary files, which sweepTemporaries may remove. Throws DiskError when it cannot be listed.
bool hasTemporaries(Disk& disk, const std::filesystem::path& folder);

// Removes the temporary files that crashed programs have left in `folder`. Called when a folder is opened, under its
// home's lock: the finished files of an import have no other. Ignores files that cannot be removed, and a missing
// folder. Throws DiskError when the folder cannot be listed.
//
// A temporary file is removed when no program is writing it, and the process in its name is not running or the file is
// too old to be that process's: process numbers are reused.
void sweepTemporaries(Disk& disk, const std::filesystem::path& folder);

// The same for the folder of an output file, which may be large and is not ours. Never throws.
void sweepBeside(Disk& disk, const std::filesystem::path& file);

}  // namespace Files
