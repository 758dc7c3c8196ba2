// One line on the terminal that tells how far a job is.
#pragma once

#include <chrono>
#include <string>

namespace App {

// Silent where standard error is no terminal, and for jobs that are done before anybody wonders.
class ProgressLine {
 public:
  // `what` says what is being done, and `unit` what is counted; without one the line tells per cent.
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
