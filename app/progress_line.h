// A progress line on the terminal.
#pragma once

#include <chrono>
#include <string>

namespace App {

// Silent when standard error is not a terminal, and for short jobs.
class ProgressLine {
 public:
  // `doing` describes the task, and `countedUnit` the unit counted; without a unit the line shows per cent.
  explicit ProgressLine(std::string doing, std::string countedUnit = {});
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void show(int done, int total);

 private:
  using Clock = std::chrono::steady_clock;

  std::string what;
  std::string unit;
  bool isTerminal;
  bool isShown = false;
  Clock::time_point nextTime;
};

}  // namespace App
