// Several files that are replaced together: whenever the power fails or the process is killed, all of them are as they
// were, or all have their new content once completeFileSet has run. Whoever opens a home calls it first.
//
// The new contents are written beside the files. Then a journal that names them is put in place, and with that the
// replacement is decided: what comes after, renaming, is repeated from the journal until it is done.
#pragma once

#include "host/documents/whole_file.h"

#include <list>
#include <set>

namespace Refhost {

class FileSet {
 public:
  // `disk` outlives the set. Files below the journal's folder may be moved with it before the journal is completed.
  FileSet(Disk& filesDisk, std::filesystem::path journalFile);

  // Notes the new content of a file, whose folder is there, and writes it beside the file; does nothing when the file
  // holds that already. Throws DiskError.
  void write(const std::filesystem::path& path, std::string_view bytes);

  // Replaces the files. When it throws DiskError they are as they were; or, when its sentence says so, they are not all
  // replaced, and completeFileSet does the rest.
  void commit();

 private:
  void writeJournal() const;
  bool isUndone() const;

  Disk& disk;
  std::filesystem::path journal;
  std::list<PendingFile> files;
};

// Completes the set of a process that did not come to its end. Does nothing where there is no journal. Throws
// DiskError; then the journal stays, for the next time.
void completeFileSet(Disk& disk, const std::filesystem::path& journal);

}  // namespace Refhost
