// The account that this process runs as.
#pragma once

#include <filesystem>
#include <string>

namespace App {

struct Account {
  // Empty when the system knows no name for it.
  std::string name;

  // The folder for what this account's person keeps. It goes by the system's list of users where the environment does
  // not name one, since schedulers give their filters another HOME. Empty when there is none.
  std::filesystem::path folder;
};

Account runningAccount();

}  // namespace App
