// What ends a command early.
#pragma once

#include <stdexcept>
#include <string>

namespace App {

// Exit statuses that every command shares. Other failures end with 1.
constexpr int wrongUsage = 2;
constexpr int cannotOpen = 2;

class Failure : public std::runtime_error {
 public:
  // `sentence` says what the user can mend.
  Failure(int status, const std::string& sentence) : std::runtime_error(sentence), exitStatus(status) {}
  int status() const { return exitStatus; }

 private:
  int exitStatus;
};

}  // namespace App
