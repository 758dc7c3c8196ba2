// One line on the terminal that tells how far a job is.
#pragma once

#include <chrono>

namespace App {

// Silent where standard error is no terminal, and for jobs that are done before anybody wonders.
class ProgressLine {
 public:
  ProgressLine();
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void show(int done, int total);

 private:
  using Clock = std::chrono::steady_clock;

  bool isTerminal;
  bool isShown = false;
  Clock::time_point nextTime;
};

}  // namespace App
