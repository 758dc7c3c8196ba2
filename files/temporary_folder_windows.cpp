#include "files/temporary_folder.h"

#include <random>
#include <string>

namespace Files {

// The system's folder for temporary files belongs to the user, and folders in it inherit its access rights. An existing
// folder belongs to others.
std::filesystem::path newPrivateFolder(const std::filesystem::path& parent, std::error_code& reason) {
  std::random_device random;
  for (int attempts = 0; attempts < 100; ++attempts) {
    const auto candidate = parent / ("kiln-" + std::to_string(random()));
    if (std::filesystem::create_directory(candidate, reason)) return candidate;
    if (reason) return {};
  }
  reason = std::make_error_code(std::errc::file_exists);
  return {};
}

void removeEmptyFolder(const std::filesystem::path& folder) {
  std::error_code ignored;
  std::filesystem::remove(folder, ignored);
}

}  // namespace Files
