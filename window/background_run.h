// Runs what takes long in the background, with a bar that tells how far it is and a way to stop it.
#pragma once

#include "window/texts.h"

#include <QString>

#include <functional>

class QWidget;

namespace Window {

enum class RunEnd { done, stopped, failed };

struct RunResult {
  RunEnd end = RunEnd::done;

  // Why it failed, as one sentence; else empty.
  QString failure;
};

// What the bar says.
struct RunName {
  QString title;
  QString doing;
};

// Told by a task how far it is, in a unit of its own; false when it is to stop.
using RunProgress = std::function<bool(int done, int total)>;

// Runs `task` on a thread of its own and returns when it is over. Meanwhile the windows stay alive, and the user can
// only stop it. `task` tells its progress, and throws Press::Cancelled or Refhost::Stopped when that says so.
RunResult runWithProgress(const std::function<void(const RunProgress&)>& task, const RunName& name, const Texts& texts,
                          QWidget* parent);

}  // namespace Window
