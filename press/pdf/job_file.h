#pragma once

#include <concepts>
#include <filesystem>
#include <string>
#include <utility>

namespace Press {

// The file of a job, and the password that opens it; an empty password for none. It is never part of a message.
struct JobFile {
  JobFile() = default;

  // Implicit: most jobs need no password.
  template <class Path>
    requires std::convertible_to<Path, std::filesystem::path>
  JobFile(Path&& path, std::string secret = {}) : file(std::forward<Path>(path)),
                                                  password(std::move(secret)) {}

  friend bool operator==(const JobFile&, const JobFile&) = default;

  std::filesystem::path file;
  std::string password;
};

// Throws PasswordNeeded when the job opens with another password alone. Says nothing of what else may be wrong with it.
void demandPassword(const JobFile& job);

}  // namespace Press
