// The interface between this host and the file system: everything that reads or saves user files goes through a Disk,
// so that tests can simulate failures and power loss at any step.
#pragma once

#include "files/path_text.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace Files {

// The sentence of a DiskError; `reason` ends it.
std::string cannotBe(std::string_view action, const std::filesystem::path& path, const std::string& reason);

// Thrown by Disk operations: one sentence with the file, what failed, and if possible what to do.
class DiskError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;

  // "PATH cannot be ACTION: REASON.", followed by advice if there is any. `action` is "read", "written" and so on.
  DiskError(const std::filesystem::path& path, std::string_view action, std::error_code reason);

  // The system's reason; no error where the system gave none.
  std::error_code code() const { return systemCode; }

 private:
  std::error_code systemCode;
};

// Runs work whose failure does no harm, and ignores a DiskError.
template <class Work>
void tryTo(const Work& work) {
  try {
    work();
  } catch (const DiskError&) {
  }
}

// `unknown` only in listings: the entry is there, but cannot be examined.
enum class EntryKind { none, file, folder, other, unknown };

// An entry of a folder.
struct Entry {
  std::filesystem::path name;
  EntryKind kind = EntryKind::none;  // of the link's target
  bool link = false;
};

// Paths may be relative, and have any length that the platform supports. All operations throw DiskError.
class Disk {
 public:
  // A file being written. The destructor closes it and does not throw.
  class File {
   public:
    virtual ~File() = default;
    virtual void write(std::string_view bytes) = 0;

    // Returns when everything written is on the storage medium.
    virtual void sync() = 0;
    virtual void close() = 0;
  };

  // A lock between all programs of the system. The destructor gives it up; so does the system when the process dies.
  class Lock {
   public:
    virtual ~Lock() = default;
  };

  // Whether a file to lock is created when it is missing.
  enum class Missing { created, refused };

  virtual ~Disk() = default;

  // The kind of the entry at `path`, following links. None only when there certainly is no entry: also for a path that
  // no entry can have, and for a link that leads nowhere. Throws when it cannot be determined, so that nobody takes an
  // existing file for a missing one and writes over it.
  virtual EntryKind kind(const std::filesystem::path& path) = 0;

  // All entries in unspecified order, without "." and "..". Throws when the list may be incomplete.
  virtual std::vector<Entry> entries(const std::filesystem::path& folder) = 0;

  // The time since the file was last written.
  virtual std::chrono::seconds age(const std::filesystem::path& file) = 0;

  // The content of a regular file of at most `limit` bytes.
  virtual std::string read(const std::filesystem::path& file, std::size_t limit) = 0;

  // Creates a file that will replace `target`, with target's permissions if that exists. Throws also when `temporary`
  // exists, or when `target` is read-only or not a regular file.
  virtual std::unique_ptr<File> create(const std::filesystem::path& temporary, const std::filesystem::path& target) = 0;

  // Renames `temporary` to `target`, in the same folder. Replaces a link at `target`, not the file it points to.
  virtual void replace(const std::filesystem::path& temporary, const std::filesystem::path& target) = 0;

  // Deletes a file, or a link itself; false when there is none.
  virtual bool remove(const std::filesystem::path& file) = 0;

  // Creates one folder; its parent exists. Does nothing when the folder exists.
  virtual void createFolder(const std::filesystem::path& folder) = 0;

  // The same, for a folder that only this user can enter.
  virtual void createPrivateFolder(const std::filesystem::path& folder) { createFolder(folder); }

  // Returns when files created, replaced and removed in `folder` are on the storage medium. (Windows has no such call:
  // there `replace` itself is synchronous, and removed files may reappear after a loss of power.)
  virtual void syncFolder(const std::filesystem::path& folder) = 0;

  // Locks a regular file; null while another program, or another lock of this one, has it or is writing it. Does not
  // wait. Throws also where the file system has no locks.
  virtual std::unique_ptr<Lock> tryLock(const std::filesystem::path& file, Missing missing) = 0;
};

// The file system of this machine.
Disk& realDisk();

#ifdef _WIN32
// Called by the real disk before it tries again to open, replace or delete a file that another program has open.
// Sleeps; tests let the other program close the file instead.
extern std::function<void()> pauseBetweenAttempts;
#endif

// The id of this process, and whether a process with that id is running on this machine.
long processNumber();
bool processRuns(long number);

}  // namespace Files
