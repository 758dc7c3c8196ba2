// A progress line on the terminal.
#pragma once

#include <chrono>
#include <string_view>

namespace App {

// Silent when standard error is not a terminal, and for short jobs.
class ProgressLine {
 public:
  // The template of a sentence about what is done and in all, or in per cent: "Printing: {1} of {2} pages", "Packing:
  // {1} %".
  explicit ProgressLine(std::string_view sentenceTemplate);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void show(int done, int total);

 private:
  using Clock = std::chrono::steady_clock;

  std::string_view sentence;
  bool isTerminal;
  bool isShown = false;
  Clock::time_point nextTime;
};

}  // namespace App
