// Keeps the changes of several programs to one home from overwriting each other.
//
// A plug-in reads a file, puts its change into what it has read, and replaces the file. The guard remembers what the
// plug-in has seen of each file. When the file is to be replaced, it compares that with the disk, both under the home's
// lock. Where another program has changed the file meanwhile, the plug-in must read it again; the lock is kept until
// its second attempt, which therefore succeeds.
#pragma once

#include "files/home_lock.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Refhost {

class ChangeGuard {
 public:
  using Lock = std::shared_ptr<Files::HomeLock>;

  // The longest wait for other programs.
  std::chrono::milliseconds longestWait = Files::longestLockWait;

  // The home's lock, shared by all who have it here; null without a home. Completes an interrupted import first. Throws
  // Files::DiskError while another program has the lock for too long, and when the import cannot be completed.
  Lock lock(Files::Disk& disk, const std::filesystem::path& home) { return lock(disk, home, longestWait); }
  Lock lock(Files::Disk& disk, const std::filesystem::path& home, std::chrono::milliseconds atMost);

  // Remembers what the plug-in has seen of a file: its content, or nothing when there was none. The first sight since
  // the last change or action counts.
  void saw(const std::filesystem::path& file, std::optional<std::string_view> bytes);

  // Whether the file is as the plug-in has seen it, or the plug-in has not looked at it, and the files that it has not
  // found beside it are still not there: an index leaves out the files that are missing. Throws Files::DiskError when
  // the file cannot be read.
  bool isAsSeen(Files::Disk& disk, const std::filesystem::path& file) const;

  // Called after a change by the plug-in.
  void wasChanged(const std::filesystem::path& file);

  // Called when the plug-in must look at the file, and beside it, again: keeps the lock until it is changed.
  void lookAgain(const std::filesystem::path& file, Lock lock);

  // Gives up the lock that is kept; called before anything that may take long.
  void release() { kept.reset(); }

  // Called when the plug-in returns to the host: what it does next is based on what it reads then.
  void endAction();

 private:
  std::weak_ptr<Files::HomeLock> held;
  Lock kept;
  std::filesystem::path keptFor;
  std::map<std::filesystem::path, std::optional<std::string>> seen;
};

}  // namespace Refhost
