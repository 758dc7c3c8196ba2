#include "app/progress_line.h"

#include "app/system/platform.h"
#include "formats/sentences.h"

#include <cstdint>
#include <cstdio>

namespace App {
namespace {

using namespace std::chrono_literals;

}  // namespace

ProgressLine::ProgressLine(std::string_view sentenceTemplate)
    : sentence(sentenceTemplate),
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
  const bool isCounted = sentence.find("{2}") != sentence.npos;
  const int percent = total > 0 ? static_cast<int>(std::int64_t{done} * 100 / total) : 0;
  std::fprintf(stderr, "\r%s", Formats::sentence(sentence, isCounted ? done : percent, total).c_str());
}

}  // namespace App
