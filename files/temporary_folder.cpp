#include "files/temporary_folder.h"

#include "files/path_text.h"

#include <stdexcept>
#include <string>
#include <system_error>

namespace Files {
namespace {

std::filesystem::path parentFolder() {
  std::error_code unusable;
  const auto parent = std::filesystem::temp_directory_path(unusable);
  if (unusable)
    throw std::runtime_error("The folder for temporary files that the environment names (TMPDIR, or TMP on Windows) "
                             "cannot be used (" +
                             unusable.message() + "): name one that is there.");
  return parent;
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  const auto parent = parentFolder();
  std::error_code reason;
  folder = newPrivateFolder(parent, reason);
  if (reason)
    throw std::runtime_error("No temporary folder can be made in " + shownPath(parent) + ": " + reason.message() + ".");
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  for (std::filesystem::directory_iterator at(folder, ignored), end; at != end; at.increment(ignored))
    std::filesystem::remove_all(at->path(), ignored);
  removeEmptyFolder(folder);
}

}  // namespace Files
