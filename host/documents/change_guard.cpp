#include "host/documents/change_guard.h"

#include "files/file_set.h"
#include "host/profiles/home_import.h"

#include <algorithm>
#include <utility>

namespace Refhost {
namespace {

// Whether the file has that content, or is not there.
bool holds(Files::Disk& disk, const std::filesystem::path& file, const std::optional<std::string>& bytes) {
  const bool isThere = disk.kind(file) != Files::EntryKind::none;
  if (!bytes || !isThere) return !bytes && !isThere;
  try {
    return disk.read(file, bytes->size()) == *bytes;
  } catch (const Files::DiskError& error) {
    if (error.code() == std::errc::file_too_large) return false;
    throw;
  }
}

}  // namespace

ChangeGuard::Lock ChangeGuard::lock(Files::Disk& disk, const std::filesystem::path& home,
                                    std::chrono::milliseconds atMost) {
  Lock lock = held.lock();
  if (lock || home.empty()) return lock;
  lock = std::make_shared<Files::HomeLock>(disk, home, atMost);
  Files::completeFileSet(disk, importJournal(home));  // of a program that has died since the home was opened
  held = lock;
  return lock;
}

void ChangeGuard::saw(const std::filesystem::path& file, std::optional<std::string_view> bytes) {
  seen.try_emplace(file, bytes);
}

bool ChangeGuard::isAsSeen(Files::Disk& disk, const std::filesystem::path& file) const {
  const auto isSame = [&](const auto& each) {
    const auto& [path, bytes] = each;
    const bool isMeant = path == file || (!bytes && path.parent_path() == file.parent_path());
    return !isMeant || holds(disk, path, bytes);
  };
  return std::all_of(seen.begin(), seen.end(), isSame);
}

void ChangeGuard::wasChanged(const std::filesystem::path& file) {
  seen.erase(file);
  if (file == keptFor) release();
}

void ChangeGuard::lookAgain(const std::filesystem::path& file, Lock lock) {
  std::erase_if(seen, [&](const auto& each) { return each.first.parent_path() == file.parent_path(); });
  kept = std::move(lock);
  keptFor = file;
}

void ChangeGuard::endAction() {
  seen.clear();
  release();
}

}  // namespace Refhost
