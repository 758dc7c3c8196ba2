#include "files/file_set.h"

#include <utility>
#include <vector>

namespace Files {
namespace {

namespace fs = std::filesystem;

// The journal: a first line, then the paths of each temporary file and its target. Each path is terminated by a NUL,
// which paths cannot contain.
constexpr std::string_view firstLine = "kiln-file-set 1\n";
constexpr std::size_t journalLimit = std::size_t{16} << 20;

using Replacements = std::vector<std::pair<fs::path, fs::path>>;  // temporary file, target

// Bytes that give the same path on the same system.
std::string pathBytes(const fs::path& path) {
  const std::u8string bytes = path.u8string();
  return {bytes.begin(), bytes.end()};
}

fs::path pathFromBytes(std::string_view bytes) { return std::u8string(bytes.begin(), bytes.end()); }

// Relative to the folder if inside it.
fs::path relativeTo(const fs::path& folder, const fs::path& path) {
  const fs::path inside = path.lexically_normal().lexically_relative(folder.lexically_normal());
  return inside.empty() || *inside.begin() == ".." ? fs::absolute(path) : inside;
}

Replacements readJournal(Disk& disk, const fs::path& journal) {
  const std::string bytes = disk.read(journal, journalLimit);
  const auto damaged = [&] {
    return DiskError(shownPath(journal) +
                     " is damaged, so an import that was interrupted cannot be completed; delete the file, and import "
                     "the profile again.");
  };
  if (!bytes.starts_with(firstLine)) throw damaged();
  std::string_view rest = std::string_view(bytes).substr(firstLine.size());
  std::vector<fs::path> paths;
  for (std::size_t end = rest.find('\0'); end != rest.npos; end = rest.find('\0')) {
    paths.push_back(folderOf(journal) / pathFromBytes(rest.substr(0, end)));
    rest.remove_prefix(end + 1);
  }
  if (!rest.empty() || paths.size() % 2 != 0) throw damaged();
  Replacements replacements;
  for (std::size_t i = 0; i < paths.size(); i += 2) replacements.emplace_back(paths[i], paths[i + 1]);
  return replacements;
}

}  // namespace

FileSet::FileSet(Disk& filesDisk, fs::path journalFile) : disk(filesDisk), journal(std::move(journalFile)) {}

void FileSet::write(const fs::path& path, std::string_view bytes) {
  if (holds(disk, path, bytes)) return;
  PendingFile& file = files.emplace_back(disk, path);
  file.write(bytes);
  file.finish();
}

void FileSet::commit() {
  if (files.empty()) return;
  if (disk.kind(journal) != EntryKind::none)
    throw DiskError("Another import into " + shownPath(folderOf(journal)) +
                    " is under way; try again when it is done.");
  std::set<fs::path> folders;
  for (const PendingFile& file : files) folders.insert(folderOf(file.path()));
  for (const fs::path& folder : folders) disk.syncFolder(folder);
  try {
    writeJournal();
  } catch (const DiskError&) {
    // If the journal may exist after all, it needs its files.
    if (!isUndone())
      for (PendingFile& file : files) file.leave();
    throw;
  }
  for (PendingFile& file : files) file.leave();
  try {
    completeFileSet(disk, journal);
  } catch (const DiskError& error) {
    throw DiskError(std::string(error.what()) + " What is still to be done is done at the next opening.");
  }
}

void FileSet::writeJournal() const {
  const fs::path folder = folderOf(journal);
  std::string bytes(firstLine);
  for (const PendingFile& file : files)
    for (const fs::path& path : {file.temporary(), file.path()}) bytes += pathBytes(relativeTo(folder, path)) + '\0';
  replaceWhole(disk, journal, bytes);
}

// Whether the journal is certainly removed, durably.
bool FileSet::isUndone() const {
  try {
    disk.remove(journal);
    disk.syncFolder(folderOf(journal));
    return true;
  } catch (const DiskError&) {
    return false;
  }
}

void completeFileSet(Disk& disk, const fs::path& journal) {
  if (disk.kind(journal) == EntryKind::none) return;
  std::set<fs::path> folders;
  for (const auto& [temporary, target] : readJournal(disk, journal)) {
    folders.insert(folderOf(target));
    if (disk.kind(temporary) == EntryKind::none) continue;  // it was renamed already
    try {
      disk.replace(temporary, target);
    } catch (const DiskError&) {
      // Another process may be completing the same set.
      if (disk.kind(temporary) != EntryKind::none) throw;
    }
  }
  for (const fs::path& folder : folders) disk.syncFolder(folder);
  disk.remove(journal);
  disk.syncFolder(folderOf(journal));
}

}  // namespace Files
