#include "app/progress_line.h"

#include "app/system/platform.h"

#include <cstdint>
#include <cstdio>
#include <utility>

namespace App {
namespace {

using namespace std::chrono_literals;

}  // namespace

ProgressLine::ProgressLine(std::string doing, std::string countedUnit)
    : what(std::move(doing)),
      unit(std::move(countedUnit)),
      isTerminal(isErrorSeen()),
      nextTime(Clock::now() + 300ms) {}

ProgressLine::~ProgressLine() {
  if (isShown) std::fputs("\r\033[K", stderr);
}

void ProgressLine::show(int done, int total) {
  const auto now = Clock::now();
  if (!isTerminal || now < nextTime) return;
  nextTime = now + 100ms;
  isShown = true;
  if (unit.empty())
    std::fprintf(stderr, "\r%s: %d %%", what.c_str(),
                 total > 0 ? static_cast<int>(std::int64_t{done} * 100 / total) : 0);
  else
    std::fprintf(stderr, "\r%s: %d of %d %s", what.c_str(), done, total, unit.c_str());
}

}  // namespace App
