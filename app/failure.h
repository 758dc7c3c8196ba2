// Exceptions that end a command.
#pragma once

#include <stdexcept>
#include <string>

namespace App {

// Exit statuses shared by all commands. Other failures exit with 1.
constexpr int wrongUsage = 2;
constexpr int cannotOpen = 2;

class Failure : public std::runtime_error {
 public:
  // `sentence` tells the user what to fix.
  Failure(int status, const std::string& sentence) : std::runtime_error(sentence), exitStatus(status) {}
  int status() const { return exitStatus; }

 private:
  int exitStatus;
};

}  // namespace App
