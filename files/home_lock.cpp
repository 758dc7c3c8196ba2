#include "files/home_lock.h"

#include <algorithm>
#include <thread>

namespace Files {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds pause{2};

// On a machine that stalls, the other program does not get on either.
constexpr steady_clock::duration longestPause = 10 * pause;

}  // namespace

HomeLock::HomeLock(Disk& disk, const std::filesystem::path& home, std::chrono::milliseconds atMost) {
  for (steady_clock::duration waited{0};;) {
    try {
      lock = disk.tryLock(home / homeLockName, Disk::Missing::created);
    } catch (const DiskError&) {
      return;
    }
    if (lock) return;
    if (waited >= atMost) throw DiskError(shownPath(home) + " is in use by another program; try again.");
    const auto start = steady_clock::now();
    std::this_thread::sleep_for(pause);
    waited += std::min(steady_clock::now() - start, longestPause);
  }
}

}  // namespace Files
