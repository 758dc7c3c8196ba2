#include "app/progress_line.h"

#include <unistd.h>

#include <cstdio>

namespace App {
namespace {

using namespace std::chrono_literals;

}  // namespace

ProgressLine::ProgressLine() : isTerminal(isatty(STDERR_FILENO) == 1), nextTime(Clock::now() + 300ms) {}

ProgressLine::~ProgressLine() {
  if (isShown) std::fputs("\r\033[K", stderr);
}

void ProgressLine::show(int done, int total) {
  const auto now = Clock::now();
  if (!isTerminal || now < nextTime) return;
  nextTime = now + 100ms;
  isShown = true;
  std::fprintf(stderr, "\rPrinting: %d of %d pages", done, total);
}

}  // namespace App
