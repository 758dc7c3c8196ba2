// The account that this process runs as.
#pragma once

#include <filesystem>
#include <string>

namespace App {

struct Account {
  // Empty when unknown.
  std::string name;

  // The data folder of this account. Falls back to the user database when the environment does not set it, since
  // schedulers run filters with another HOME. Empty when there is none.
  std::filesystem::path folder;
};

Account runningAccount();

}  // namespace App
