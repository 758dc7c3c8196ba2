#include "files/home_lock.h"

#include "formats/sentences.h"

#include <algorithm>
#include <thread>

namespace Files {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds pause{2};

// Whether the error tells nothing of the home.
bool isPassing(std::error_code code) {
  return code == std::errc::too_many_files_open || code == std::errc::too_many_files_open_in_system ||
         code == std::errc::not_enough_memory || code == std::errc::interrupted || code == std::errc::io_error;
}

// On a machine that stalls, the other program does not get on either.
constexpr steady_clock::duration longestPause = 10 * pause;

}  // namespace

HomeLock::HomeLock(Disk& disk, const std::filesystem::path& home, std::chrono::milliseconds atMost) {
  for (steady_clock::duration waited{0};;) {
    try {
      lock = disk.tryLock(home / homeLockName, Disk::Missing::created);
    } catch (const DiskError& problem) {
      if (isPassing(problem.code())) throw;
      return;
    }
    if (lock) return;
    if (waited >= atMost)
      throw DiskError(Formats::sentence("{1} is in use by another program; try again.", shownPath(home)));
    const auto start = steady_clock::now();
    std::this_thread::sleep_for(pause);
    waited += std::min(steady_clock::now() - start, longestPause);
  }
}

}  // namespace Files
