// The lock of a home: whoever changes the files of a home depending on what they contain holds it meanwhile.
//
// Reading needs no lock, since files are replaced atomically. The lock file stays in the home for good: a program may
// be about to lock the one that another deletes.
#pragma once

#include "files/disk.h"

#include <chrono>
#include <filesystem>
#include <memory>

namespace Files {

inline constexpr const char* homeLockName = ".kiln-lock";

// The longest wait for other programs.
inline constexpr std::chrono::milliseconds longestLockWait{10'000};

class HomeLock {
 public:
  // Waits while another program has the lock, but not longer than `atMost`: then throws DiskError, one sentence. So it
  // does for an error that may pass. Where the home cannot be written, or its file system has no locks, nothing is
  // locked.
  HomeLock(Disk& disk, const std::filesystem::path& home, std::chrono::milliseconds atMost = longestLockWait);

 private:
  std::unique_ptr<Disk::Lock> lock;
};

}  // namespace Files
