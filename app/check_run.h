// Runs checks, each in a process of its own.
#pragma once

#include "check/check.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace App {

enum class CheckResult { passed, failed, crashed, skipped };

struct CheckOutcome {
  CheckResult result;

  // Why: one sentence; empty when the check has passed.
  std::string reason;
};

// "passed", "failed", "crashed", "skipped".
const char* nameOf(CheckResult result);

// Runs a check in this process. What is not caught ends the process.
CheckOutcome runHere(const Checking::Check& check, const Checking::Subject& subject);

// Writes an outcome to a file, and reads it.
void writeOutcome(const std::filesystem::path& file, const CheckOutcome& outcome);

// Runs this program with `arguments`, which write an outcome to `file`, for so many seconds at most.
CheckOutcome runApart(const std::vector<std::string>& arguments, const std::filesystem::path& file, int seconds);

}  // namespace App
