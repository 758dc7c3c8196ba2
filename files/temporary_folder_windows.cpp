#include "files/temporary_folder.h"

#include "files/path_text.h"

#include <random>
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
  std::random_device random;
  // The system's folder for temporary files belongs to the user, and folders in it inherit its access rights. An
  // existing folder belongs to others: use and remove only a folder created here.
  for (int attempts = 0; attempts < 100; ++attempts) {
    const auto candidate = parent / ("kiln-" + std::to_string(random()));
    std::error_code error;
    if (!std::filesystem::create_directory(candidate, error)) {
      if (error)
        throw std::runtime_error("No temporary folder can be made in " + shownPath(parent) + ": " + error.message() +
                                 ".");
      continue;
    }
    folder = candidate;
    return;
  }
  throw std::runtime_error("No temporary folder can be made in " + shownPath(parent) + ": every name tried is taken.");
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
}

}  // namespace Files
