// The folder for all user data of a run.
#pragma once

#include "files/temporary_folder.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Refhost {

// The absolute path of a home.
std::filesystem::path homePath(const std::filesystem::path& wanted);

// Created if possible when missing, as are the folders in it that every run has. A temporary one, for an empty path, is
// deleted with this object.
class Home {
 public:
  explicit Home(const std::filesystem::path& wanted);

  std::filesystem::path path;

  // Why a folder of it is missing, as one sentence; empty when all are there.
  std::string problem;

 private:
  std::optional<Files::TemporaryFolder> temporary;
};

}  // namespace Refhost
