#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace Press {

// Atomic file replacement. Bytes go to a temporary file in the target's folder; `commit` flushes them to the disk and
// renames the file to the target. Until then, and after a failure, the target is unchanged. All failures throw
// std::system_error.
class WholeFile {
 public:
  // Creates the temporary file. A symbolic link is followed; an existing target must be a writable regular file, and
  // its permissions are kept.
  explicit WholeFile(const std::filesystem::path& target);

  // Removes the temporary file unless `commit` has succeeded.
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  void write(const void* data, std::size_t size);

  // Must be the last call.
  void commit();

 private:
  std::filesystem::path target;
  std::filesystem::path temporary;
  int handle = -1;
  std::uint64_t written = 0;     // bytes
  std::uint64_t onTheirWay = 0;  // bytes whose write-back was started
};

}  // namespace Press
