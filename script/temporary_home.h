// A folder of its own for what a user keeps, which goes with this object.
#pragma once

#include <filesystem>

namespace Script {

class TemporaryHome {
 public:
  // Throws std::runtime_error, one sentence, when no folder can be made.
  TemporaryHome();
  ~TemporaryHome();
  TemporaryHome(const TemporaryHome&) = delete;
  TemporaryHome& operator=(const TemporaryHome&) = delete;

  const std::filesystem::path& path() const { return folder; }

 private:
  std::filesystem::path folder;
};

}  // namespace Script
