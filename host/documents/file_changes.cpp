#include "host/documents/file_changes.h"

#include "files/file_set.h"
#include "files/whole_file.h"
#include "formats/sentences.h"

#include <algorithm>
#include <utility>

namespace Refhost {
namespace {

std::size_t sizeOf(const FileContent& content) { return content ? content->size() : 0; }

// Throws Files::DiskError.
FileContent contentOf(Files::Disk& disk, const std::filesystem::path& file) {
  if (disk.kind(file) == Files::EntryKind::none) return {};
  return disk.read(file, FileChanges::mostBytes);
}

// A file that is too large was changed by somebody.
bool isContent(Files::Disk& disk, const std::filesystem::path& file, const FileContent& content) {
  try {
    return contentOf(disk, file) == content;
  } catch (const Files::DiskError& error) {
    if (error.code() == std::errc::file_too_large) return false;
    throw;
  }
}

}  // namespace

FileContent FileChanges::contentBefore(Files::Disk& disk, const std::filesystem::path& file) {
  if (isCut) return {};
  try {
    return contentOf(disk, file);
  } catch (const Files::DiskError&) {
    cut();
    return {};
  }
}

void FileChanges::add(const std::filesystem::path& file, FileContent before, FileContent after) {
  if (isCut) return;
  const auto known = std::ranges::find(changes, file, &Change::file);
  if (known == changes.end()) {
    size += sizeOf(before) + sizeOf(after);
    changes.push_back({file, std::move(before), std::move(after)});
  } else {
    if (known->after != before) return cut();
    size += sizeOf(after);
    size -= sizeOf(known->after);
    known->after = std::move(after);
  }
  if (size > mostBytes) cut();
}

void FileChanges::add(const FileChanges& later) {
  if (later.isCut) return cut();
  for (const auto& [file, before, after] : later.changes) add(file, before, after);
}

void FileChanges::extend(State state, FileChanges& further) {
  for (Change& change : changes) {
    const auto same = std::ranges::find(further.changes, change.file, &Change::file);
    if (same == further.changes.end()) continue;
    FileContent& content = state == State::before ? change.before : change.after;
    if (content == same->before) {
      size += sizeOf(same->after);
      size -= sizeOf(content);
      content = same->after;
    }
    further.changes.erase(same);
  }
}

void FileChanges::restore(Files::Disk& disk, const std::filesystem::path& journal, State state) const {
  for (const auto& [file, before, after] : changes)
    if (!isContent(disk, file, state == State::before ? after : before))
      throw ChangedSince(
          Formats::sentence("{1} was changed meanwhile, so this action cannot be taken back.", Files::shownPath(file)));

  Files::FileSet set(disk, journal);
  for (const auto& [file, before, after] : changes) {
    const FileContent& wanted = state == State::before ? before : after;
    if (!wanted) continue;
    Files::createFolders(disk, Files::folderOf(file));
    set.write(file, *wanted);
  }
  set.commit();
  for (const auto& [file, before, after] : changes)
    if (!(state == State::before ? before : after) && disk.remove(file)) disk.syncFolder(Files::folderOf(file));
}

void FileChanges::cut() {
  clear();
  isCut = true;
}

}  // namespace Refhost
