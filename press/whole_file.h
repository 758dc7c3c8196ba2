#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace Press {

/// A file that is replaced whole or not at all. Bytes go to a temporary file in the target's folder; `commit` flushes
/// them to the disk and puts them in the target's place. Until then, and after any failure, the target is as it was.
/// Every failure is a `std::system_error`.
class WholeFile {
 public:
  /// Creates the temporary file. A target that is a symbolic link stands for the file that it points to; one that
  /// exists must be an ordinary file that may be written, and its permissions are kept.
  explicit WholeFile(const std::filesystem::path& target);
  /// Removes the temporary file unless `commit` has succeeded.
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  void write(const void* data, std::size_t size);
  /// The last call: after it, nothing more may be written.
  void commit();

 private:
  std::filesystem::path target;
  std::filesystem::path temporary;
  int handle = -1;
  std::uint64_t written = 0;     ///< Bytes.
  std::uint64_t onTheirWay = 0;  ///< Bytes, of which the system was asked to bring them to the disk.
};

}  // namespace Press
