// A private temporary folder, removed by the destructor.
#pragma once

#include <filesystem>

namespace Files {

class TemporaryFolder {
 public:
  // Throws std::runtime_error, one sentence, when no folder can be created.
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return folder; }

 private:
  std::filesystem::path folder;
};

}  // namespace Files
