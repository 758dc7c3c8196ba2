// A private temporary folder, removed by the destructor.
#pragma once

#include "files/disk.h"

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

namespace Files {

class TemporaryFolder {
 public:
  // Removes what killed programs of this user have left first. Throws std::runtime_error, one sentence, when no folder
  // can be created.
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return folder; }

 private:
  std::filesystem::path folder;
  std::unique_ptr<Disk::Lock> hold;
};

// Removes the temporary folders in `parent` that killed programs of this user have left: those that nobody holds, and
// whose process is not running or which are too old to be that process's. Never throws.
void sweepTemporaryFolders(const std::filesystem::path& parent);

// One source file per system has what follows.

// A new folder that only this user can enter, in `parent`: `name` followed by what makes it unique. Sets `reason` on
// failure.
std::filesystem::path newPrivateFolder(const std::filesystem::path& parent, const std::string& name,
                                       std::error_code& reason);

// Marks a folder as in use until the lock is destroyed. Null when it cannot be.
std::unique_ptr<Disk::Lock> holdFolder(const std::filesystem::path& folder);

// Whether the folder is this user's, and nobody holds it.
bool isOwnAndFree(const std::filesystem::path& folder);

// Removes an empty folder; ignores failures. Unlike std::filesystem::remove, it never tries to remove a file, which a
// confined process may not do in `folder`'s parent.
void removeEmptyFolder(const std::filesystem::path& folder);

}  // namespace Files
