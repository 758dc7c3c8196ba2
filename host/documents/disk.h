// The one seam between this host and the files of the system: everything that reads or saves a user's files goes
// through a Disk, so that a test can put one behind it that fails, or loses power, at any step.
#pragma once

#include "host/documents/path_text.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace Refhost {

// What a Disk throws: one sentence that names the file, what failed, and where possible what to do.
class DiskError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;

  // "PATH cannot be ACTION: REASON.", with what a person can do about it. `action` is "read", "written" ...
  DiskError(const std::filesystem::path& path, std::string_view action, std::error_code reason);
};

enum class EntryKind { none, file, folder, other };

// One name in a folder.
struct Entry {
  std::filesystem::path name;
  EntryKind kind = EntryKind::none;  // of what a link points to
  bool link = false;
};

// Paths may be relative; they are what the platform takes, of any length it can hold. All operations throw DiskError.
class Disk {
 public:
  // A file that is being written. Destroying it closes it, and throws nothing.
  class File {
   public:
    virtual ~File() = default;
    virtual void write(std::string_view bytes) = 0;

    // Returns when all that was written is on the medium.
    virtual void sync() = 0;
    virtual void close() = 0;
  };

  virtual ~Disk() = default;

  // What is at `path`, or at the end of the links there; none where there is nothing or it cannot be told.
  virtual EntryKind kind(const std::filesystem::path& path) = 0;

  // In no particular order, without "." and "..".
  virtual std::vector<Entry> entries(const std::filesystem::path& folder) = 0;

  // The time since the file was last written.
  virtual std::chrono::seconds age(const std::filesystem::path& file) = 0;

  // All bytes of an ordinary file of at most `limit` bytes.
  virtual std::string read(const std::filesystem::path& file, std::size_t limit) = 0;

  // A new file that is to take `target`'s place: it gets target's permissions where that exists, and is refused where
  // target may not be written or is no ordinary file. Throws also where there is something at `temporary`.
  virtual std::unique_ptr<File> create(const std::filesystem::path& temporary, const std::filesystem::path& target) = 0;

  // Puts the file `temporary` in the place of `target`, in the same folder. A link at `target` is replaced itself.
  virtual void replace(const std::filesystem::path& temporary, const std::filesystem::path& target) = 0;

  // Deletes a file, or a link itself; false when there was none.
  virtual bool remove(const std::filesystem::path& file) = 0;

  // Makes one folder; its parent exists. Does nothing where it is there.
  virtual void createFolder(const std::filesystem::path& folder) = 0;

  // Returns when what was created, replaced and removed in `folder` is on the medium. (Windows has no such call: there
  // `replace` itself waits for the medium, and what was removed may be back after a loss of power.)
  virtual void syncFolder(const std::filesystem::path& folder) = 0;
};

// The disk of the system.
Disk& realDisk();

// This process's number, and whether one of that number is running on this machine.
long processNumber();
bool processRuns(long number);

}  // namespace Refhost
