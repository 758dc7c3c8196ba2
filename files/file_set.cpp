#include "files/file_set.h"

#include "formats/sentences.h"

#include <algorithm>
#include <map>
#include <optional>
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

bool leadsOut(const fs::path& relative) { return relative.empty() || *relative.begin() == ".."; }

// Relative to the folder if inside it.
fs::path relativeTo(const fs::path& folder, const fs::path& path) {
  const fs::path inside = path.lexically_normal().lexically_relative(folder.lexically_normal());
  return leadsOut(inside) ? fs::absolute(path) : inside;
}

// Nothing when the bytes are no journal.
std::optional<Replacements> parseJournal(std::string_view bytes) {
  if (!bytes.starts_with(firstLine)) return {};
  bytes.remove_prefix(firstLine.size());
  std::vector<fs::path> paths;
  for (std::size_t end = bytes.find('\0'); end != bytes.npos; end = bytes.find('\0')) {
    paths.push_back(pathFromBytes(bytes.substr(0, end)));
    bytes.remove_prefix(end + 1);
  }
  if (!bytes.empty() || paths.size() % 2 != 0) return {};
  Replacements replacements;
  for (std::size_t i = 0; i < paths.size(); i += 2) replacements.emplace_back(paths[i], paths[i + 1]);
  return replacements;
}

// Whether `inside`, which is in `folder` by its name, is there without its links as well. Throws DiskError.
bool isReallyIn(const fs::path& folder, const fs::path& inside) {
  std::error_code error;
  const fs::path outer = fs::weakly_canonical(folder, error);
  if (error) throw DiskError(folder, "examined", error);
  const fs::path inner = fs::weakly_canonical(inside, error);
  if (error == std::errc::too_many_symbolic_link_levels) return false;
  if (error) throw DiskError(inside, "examined", error);
  return !leadsOut(inner.lexically_relative(outer));
}

// Decides whether the entries of a journal are such as an import into its folder writes. A journal may come with a home
// from elsewhere, and must not make whoever opens the home move files outside of it.
class Entries {
 public:
  Entries(Disk& filesDisk, fs::path journalFolder) : disk(filesDisk), folder(std::move(journalFolder)) {}

  // Whether a journal may have entries for a file of this path, relative to the folder. Throws DiskError.
  bool mayBeOf(const fs::path& path) { return placeProblem(path).empty(); }

  // Why the entry is none, as the end of a sentence; empty when it is one.
  std::string problem(const fs::path& temporary, const fs::path& target) {
    for (const fs::path& path : {temporary, target})
      if (std::string found = placeProblem(path); !found.empty()) return found;
    if (folderOf(temporary) != folderOf(target)) return Formats::sentence("it moves a file from one folder to another");
    if (!isTemporaryName(temporary.filename()))
      return Formats::sentence("it moves a file that is no temporary file of an import");
    if (isReserved(target.filename())) return Formats::sentence("it replaces a file that no import replaces");
    std::error_code ignored;
    const EntryKind found = disk.kind(folder / temporary);
    if ((found != EntryKind::none && found != EntryKind::file) || fs::is_symlink(folder / temporary, ignored))
      return Formats::sentence("it moves something that is no ordinary file");
    const EntryKind replaced = disk.kind(folder / target);
    return replaced == EntryKind::none || replaced == EntryKind::file
               ? ""
               : Formats::sentence("it replaces something that is no file");
  }

 private:
  std::string placeProblem(const fs::path& path) {
    if (path.has_root_path()) return Formats::sentence("it has an absolute path");
    const bool isPlain = std::none_of(path.begin(), path.end(),
                                      [](const fs::path& part) { return part.empty() || part == "." || part == ".."; });
    if (path.empty() || !isPlain) return Formats::sentence("it has a path that is not plain, such as one with \"..\"");
    const auto [place, isNew] = isInside.try_emplace(folderOf(path), false);
    if (isNew) place->second = isReallyIn(folder, folder / place->first);
    return place->second ? ""
                         : Formats::sentence("{1} is a link that leads out of {2}", shownPath(linkOut(place->first)),
                                             shownPath(folder));
  }

  // The first part of the way to a folder that is not really in this one.
  fs::path linkOut(const fs::path& place) {
    fs::path way = folder;
    for (const fs::path& part : place) {
      way /= part;
      if (!isReallyIn(folder, way)) break;
    }
    return way;
  }

  static bool isReserved(const fs::path& name) { return shownPath(name).starts_with(".kiln"); }

  Disk& disk;
  const fs::path folder;
  std::map<fs::path, bool> isInside;  // by folder, relative to `folder`
};

// Renames what must not be carried out, so that it is told once, and does not hinder later imports. Throws.
[[noreturn]] void refuse(Disk& disk, const fs::path& journal, const std::string& problem) {
  fs::path aside;
  try {
    (aside = journal) += ".refused-";
    aside = firstFree(disk, aside);
    disk.replace(journal, aside);
    disk.syncFolder(folderOf(journal));
  } catch (const DiskError&) {
    throw RefusedJournal(Formats::sentence("{1} is refused as the journal of an interrupted import: {2}. Nothing is "
                                           "moved for it, so the import may be half "
                                           "done. Delete it, and import the profile again.",
                                           shownPath(journal), problem));
  }
  throw RefusedJournal(Formats::sentence(
      "{1} is refused as the journal of an interrupted import: {2}. Nothing is moved for it, so the import may be half "
      "done. It is now {3}; import the profile again.",
      shownPath(journal), problem, shownPath(aside)));
}

// With full paths.
Replacements readJournal(Disk& disk, const fs::path& journal) {
  const fs::path folder = folderOf(journal);
  if (disk.kind(journal) != EntryKind::file) refuse(disk, journal, Formats::sentence("it is no file"));
  std::string bytes;
  try {
    bytes = disk.read(journal, journalLimit);
  } catch (const DiskError& error) {
    if (error.code() != std::errc::file_too_large) throw;
    refuse(disk, journal, Formats::sentence("it is too large"));
  }
  std::optional<Replacements> replacements = parseJournal(bytes);
  if (!replacements) refuse(disk, journal, Formats::sentence("it is damaged"));
  Entries entries(disk, folder);
  for (const auto& [temporary, target] : *replacements)
    if (const std::string problem = entries.problem(temporary, target); !problem.empty())
      refuse(disk, journal, Formats::sentence("in one of its entries, {1}", problem));
  for (auto& [temporary, target] : *replacements) {
    temporary = folder / temporary;
    target = folder / target;
  }
  return std::move(*replacements);
}

void carryOut(Disk& disk, const fs::path& journal, const Replacements& replacements) {
  std::set<fs::path> folders;
  for (const auto& [temporary, target] : replacements) {
    folders.insert(folderOf(target));
    if (disk.kind(temporary) == EntryKind::none) continue;  // it was renamed already
    try {
      disk.replace(temporary, target);
    } catch (const DiskError&) {
      // Another process may be completing the same set.
      if (disk.kind(temporary) != EntryKind::none) throw;
    }
  }
  for (const fs::path& folder : folders) {
    try {
      disk.syncFolder(folder);
    } catch (const DiskError& error) {
      // Somebody has deleted it since the interruption.
      if (error.code() != std::errc::no_such_file_or_directory) throw;
    }
  }
  disk.remove(journal);
  disk.syncFolder(folderOf(journal));
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
    throw DiskError(Formats::sentence("Another import into {1} is under way; try again when it is done.",
                                      shownPath(folderOf(journal))));
  std::set<fs::path> folders;
  for (const PendingFile& file : files) folders.insert(folderOf(file.path()));
  for (const fs::path& folder : folders) disk.syncFolder(folder);
  for (const PendingFile& file : files)
    if (disk.kind(file.temporary()) != EntryKind::file)
      throw DiskError(Formats::sentence("{1} was deleted by another program; try again.", shownPath(file.temporary())));
  const std::size_t all = files.size();
  try {
    replaceOutside();
    writeJournal();
  } catch (const DiskError& error) {
    // If the journal may exist after all, it needs its files.
    if (!isUndone())
      for (PendingFile& file : files) file.leave();
    if (files.size() == all) throw;
    throw DiskError(Formats::sentence("{1} Files outside of {2} are replaced already.", error.what(),
                                      shownPath(folderOf(journal))));
  }
  Replacements replacements;
  for (PendingFile& file : files) {
    file.leave();
    replacements.emplace_back(file.temporary(), file.path());
  }
  try {
    carryOut(disk, journal, replacements);
  } catch (const DiskError& error) {
    throw DiskError(Formats::sentence("{1} What is still to be done is done at the next opening.", error.what()));
  }
}

// A journal with such a file would be refused, and with it the rest of the set.
void FileSet::replaceOutside() {
  Entries entries(disk, folderOf(journal));
  for (auto file = files.begin(); file != files.end();) {
    if (entries.mayBeOf(relativeTo(folderOf(journal), file->path()))) {
      ++file;
      continue;
    }
    file->putInPlace();
    file = files.erase(file);
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
  if (disk.kind(journal) != EntryKind::none) carryOut(disk, journal, readJournal(disk, journal));
}

}  // namespace Files
