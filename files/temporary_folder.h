// A private temporary folder, removed by the destructor.
#pragma once

#include <filesystem>
#include <system_error>

namespace Files {

class TemporaryFolder {
 public:
  // Throws std::runtime_error, one sentence, when no folder can be created.
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return folder; }

 private:
  std::filesystem::path folder;
};

// A new folder that only this user can enter, in `parent`. Sets `reason` on failure. One source file per system.
std::filesystem::path newPrivateFolder(const std::filesystem::path& parent, std::error_code& reason);

// Removes an empty folder; ignores failures. Unlike std::filesystem::remove, it never tries to remove a file, which a
// confined process may not do in `folder`'s parent.
void removeEmptyFolder(const std::filesystem::path& folder);

}  // namespace Files
