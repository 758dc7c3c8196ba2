// What an action has changed of the user's files: their contents before and after it, to undo and to redo it.
#pragma once

#include "files/disk.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Refhost {

// The content of a file; nothing where there is none.
using FileContent = std::optional<std::string>;

// Thrown when a file is not as the action left it: one sentence.
class ChangedSince : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class FileChanges {
 public:
  // Of one action, contents before and after together.
  static constexpr std::size_t mostBytes = std::size_t{128} << 20;

  // The content of a file that is about to be changed, under the home's lock. When it cannot be read, the changes are
  // incomplete.
  FileContent contentBefore(Files::Disk& disk, const std::filesystem::path& file);

  // The file was changed. Several changes of one file are one, unless another program has changed it in between: then
  // the changes are incomplete, as when they are too large.
  void add(const std::filesystem::path& file, FileContent before, FileContent after);
  void add(const FileChanges& later);

  // Files that are in one of the states now were changed further: that state has the new contents from now on. Takes
  // the files that are in these changes out of `further`.
  enum class State { before, after };
  void extend(State state, FileChanges& further);

  void clear() { *this = {}; }

  bool isEmpty() const { return changes.empty() && !isCut; }

  // Whether undo can restore all of the files.
  bool isComplete() const { return !isCut; }
  std::size_t bytes() const { return size; }

  // Replaces and deletes the files so that they are as before the action, or as after it; call under the home's lock.
  // An interruption leaves all files that are replaced old or new, once Files::completeFileSet has run; files are
  // deleted after that, when nothing refers to them. Throws ChangedSince without a change when one of them is not in
  // the other state, and Files::DiskError.
  void restore(Files::Disk& disk, const std::filesystem::path& journal, State state) const;

 private:
  struct Change {
    std::filesystem::path file;
    FileContent before;
    FileContent after;
  };

  void cut();

  std::vector<Change> changes;
  std::size_t size = 0;
  bool isCut = false;
};

}  // namespace Refhost
