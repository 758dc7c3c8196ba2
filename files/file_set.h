// Replaces several files atomically: after a crash or power loss, once completeFileSet has run, all files have their
// old content or all have the new one. Call completeFileSet before opening a home.
//
// The new contents are written beside the files; then a journal that lists them is put in place, which commits the
// replacement. The renames that follow are repeated from the journal until they are complete.
#pragma once

#include "files/whole_file.h"

#include <list>
#include <set>

namespace Files {

class FileSet {
 public:
  // `disk` outlives the set. The journal may be completed after its folder, with files below it, was moved.
  FileSet(Disk& filesDisk, std::filesystem::path journalFile);

  // Registers the new content of a file in an existing folder, and writes it beside the file; does nothing when the
  // content is unchanged. A file outside of the journal's folder, by its path or by a link, is replaced before the
  // others, which are replaced together: it must be of use without them. Throws DiskError.
  void write(const std::filesystem::path& path, std::string_view bytes);

  // Replaces the files. On DiskError they are unchanged, unless its message says that some are replaced;
  // completeFileSet then completes the rest.
  void commit();

 private:
  void replaceOutside();
  void writeJournal() const;
  bool isUndone() const;

  Disk& disk;
  std::filesystem::path journal;
  std::list<PendingFile> files;
};

// The journal was read, and is not carried out.
class RefusedJournal : public DiskError {
 public:
  using DiskError::DiskError;
};

// Completes the set of a process that was interrupted. Does nothing without a journal. On DiskError the journal stays
// for another attempt: until then, the files must not be written, and no temporary file of theirs be removed.
//
// A journal is trusted with nothing but what such a set does in the journal's own folder: to move temporary files of
// ours to files beside them. One that is damaged, or has any other entry (an absolute path, "..", through a link to
// outside), is not carried out at all: it is renamed to JOURNAL.refused-N, and RefusedJournal says so.
void completeFileSet(Disk& disk, const std::filesystem::path& journal);

}  // namespace Files
