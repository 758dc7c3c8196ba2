#include "files/home_lock.h"

#include <thread>

namespace Files {
namespace {

constexpr std::chrono::milliseconds pause{2};

}  // namespace

HomeLock::HomeLock(Disk& disk, const std::filesystem::path& home, std::chrono::milliseconds atMost) {
  const auto last = std::chrono::steady_clock::now() + atMost;
  for (;;) {
    try {
      lock = disk.tryLock(home / homeLockName, Disk::Missing::created);
    } catch (const DiskError&) {
      return;
    }
    if (lock) return;
    if (std::chrono::steady_clock::now() >= last)
      throw DiskError(shownPath(home) + " is in use by another program; try again.");
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace Files
