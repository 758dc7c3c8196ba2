#include "files/path_text.h"
#include "files/temporary_folder.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <system_error>

namespace Files {

TemporaryFolder::TemporaryFolder() {
  std::error_code unusable;
  const auto parent = std::filesystem::temp_directory_path(unusable);
  if (unusable)
    throw std::runtime_error("The folder for temporary files that the environment names (TMPDIR, or TMP on Windows) "
                             "cannot be used (" +
                             unusable.message() + "): name one that is there.");
  // Creates a folder that only this user can enter.
  std::string name = (parent / "kiln-XXXXXX").native();
  if (mkdtemp(name.data()) == nullptr)
    throw std::runtime_error("No temporary folder can be made in " + shownPath(parent) + ": " +
                             std::generic_category().message(errno) + ".");
  folder = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
}

}  // namespace Files
