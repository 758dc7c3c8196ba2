#include "script/temporary_home.h"

#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

namespace Script {

TemporaryHome::TemporaryHome() {
  std::random_device random;
  const auto parent = std::filesystem::temp_directory_path();
  // A name that is taken belongs to somebody else: only a folder made here is used, and removed.
  for (int attempts = 0; attempts < 100; ++attempts) {
    const auto candidate = parent / ("kiln-drive-" + std::to_string(random()));
    std::error_code error;
    if (!std::filesystem::create_directory(candidate, error)) {
      if (error)
        throw std::runtime_error("No temporary home can be made in " + parent.string() + ": " + error.message() + ".");
      continue;
    }
    folder = candidate;
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    return;
  }
  throw std::runtime_error("No temporary home can be made in " + parent.string() + ": every name tried is taken.");
}

TemporaryHome::~TemporaryHome() {
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
}

}  // namespace Script
