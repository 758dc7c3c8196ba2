#include "files/whole_file.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <optional>

namespace Files {
namespace {

namespace fs = std::filesystem;

// Names of temporary files: .kiln-PROCESS-COUNT.tmp
constexpr std::string_view nameStart = ".kiln-";
constexpr std::string_view nameEnd = ".tmp";

// Longer than any write without a lock. PIDs are reused, so files older than this are removed even if their process
// seems to run.
constexpr std::chrono::hours longestWrite{1};

fs::path temporaryIn(Disk& disk, const fs::path& folder) {
  static std::atomic<unsigned> count = 0;
  for (;;) {
    const auto name = std::string(nameStart) + std::to_string(processNumber()) + "-" + std::to_string(++count);
    fs::path path = folder / (name + std::string(nameEnd));
    if (disk.kind(path) == EntryKind::none) return path;
  }
}

// The process id in a temporary file's name; nothing for other names.
std::optional<long> writerOf(const fs::path& name) {
  const std::string text = shownPath(name);
  std::string_view rest = text;
  if (!rest.starts_with(nameStart) || !rest.ends_with(nameEnd)) return {};
  rest.remove_prefix(nameStart.size());
  rest.remove_suffix(nameEnd.size());
  long process = 0;
  const auto number = std::from_chars(rest.data(), rest.data() + rest.size(), process);
  rest.remove_prefix(static_cast<std::size_t>(number.ptr - rest.data()));
  const bool counted = rest.size() > 1 && rest.front() == '-' && rest.find_first_not_of("0123456789", 1) == rest.npos;
  return number.ec == std::errc() && process > 0 && counted ? std::optional(process) : std::nullopt;
}

// Where it cannot be determined, the process in the name decides.
bool isBeingWritten(Disk& disk, const fs::path& temporary) {
  try {
    return disk.tryLock(temporary, Disk::Missing::refused) == nullptr;
  } catch (const DiskError&) {
    return false;
  }
}

void sweep(Disk& disk, const fs::path& folder, const fs::path& name) {
  const auto writer = writerOf(name);
  if (!writer) return;
  const fs::path path = folder / name;
  try {
    if (processRuns(*writer) && disk.age(path) <= longestWrite) return;
    if (disk.kind(path) == EntryKind::file && !isBeingWritten(disk, path)) disk.remove(path);
  } catch (const DiskError&) {
    // Harmless; the next sweep retries.
  }
}

}  // namespace

PendingFile::PendingFile(Disk& fileDisk, fs::path filePath)
    : disk(fileDisk),
      target(std::move(filePath)),
      place(temporaryIn(disk, folderOf(target))),
      file(disk.create(place, target)) {}

PendingFile::~PendingFile() {
  file.reset();  // some systems cannot remove open files
  if (!isOurs) return;
  try {
    disk.remove(place);
  } catch (const DiskError&) {
    // The first failure is reported; the next sweep retries.
  }
}

void PendingFile::write(std::string_view bytes) { file->write(bytes); }

void PendingFile::finish() {
  file->sync();
  file->close();
  file.reset();
}

void PendingFile::putInPlace() {
  disk.replace(place, target);
  leave();
  disk.syncFolder(folderOf(target));
}

fs::path linkTarget(const fs::path& path) {
  std::error_code problem;
  const fs::file_status status = fs::symlink_status(path, problem);
  if (!fs::status_known(status)) throw DiskError(path, "examined", problem);
  if (!fs::is_symlink(status)) return path;
  fs::path target = fs::weakly_canonical(path, problem);
  if (problem) throw DiskError(path, "followed", problem);
  return target;
}

bool holds(Disk& disk, const fs::path& path, std::string_view bytes) {
  try {
    return disk.kind(path) == EntryKind::file && disk.read(path, bytes.size()) == bytes;
  } catch (const DiskError&) {
    return false;  // larger or unreadable: the write reports the error
  }
}

bool replaceWhole(Disk& disk, const fs::path& path, std::string_view bytes) {
  if (holds(disk, path, bytes)) {
    // The process that wrote it may have died before its last step.
    disk.syncFolder(folderOf(path));
    return false;
  }
  PendingFile file(disk, path);
  file.write(bytes);
  file.finish();
  file.putInPlace();
  return true;
}

void createFolders(Disk& disk, const fs::path& folder) {
  if (folder.empty() || disk.kind(folder) == EntryKind::folder) return;
  if (folder.has_relative_path()) createFolders(disk, folder.parent_path());
  disk.createFolder(folder);
  disk.syncFolder(folderOf(folder));
}

void createPrivateFolder(Disk& disk, const fs::path& folder) {
  if (folder.empty() || disk.kind(folder) == EntryKind::folder) return;
  if (folder.has_relative_path()) createFolders(disk, folder.parent_path());
  disk.createPrivateFolder(folder);
  disk.syncFolder(folderOf(folder));
}

fs::path firstFree(Disk& disk, const fs::path& start) {
  for (int number = 1;; ++number) {
    fs::path path = start;
    path += std::to_string(number);
    if (disk.kind(path) == EntryKind::none) return path;
  }
}

bool isTemporaryName(const fs::path& name) { return writerOf(name).has_value(); }

bool hasTemporaries(Disk& disk, const fs::path& folder) {
  if (disk.kind(folder) != EntryKind::folder) return false;
  const std::vector<Entry> found = disk.entries(folder);
  return std::any_of(found.begin(), found.end(), [](const Entry& entry) { return isTemporaryName(entry.name); });
}

void sweepTemporaries(Disk& disk, const fs::path& folder) {
  if (disk.kind(folder) != EntryKind::folder) return;
  for (const Entry& entry : disk.entries(folder))
    if (entry.kind == EntryKind::file) sweep(disk, folder, entry.name);
}

// Looks at the names alone, since the folder may have many files.
void sweepBeside(Disk& disk, const fs::path& file) {
  std::error_code error;
  for (fs::directory_iterator at(folderOf(file), error), end; !error && at != end; at.increment(error))
    sweep(disk, folderOf(file), at->path().filename());
}

}  // namespace Files
