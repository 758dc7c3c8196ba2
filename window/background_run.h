// Runs long tasks in the background, with a progress bar that can stop them.
#pragma once

#include "window/texts.h"

#include <QString>

#include <functional>

class QWidget;

namespace Window {

enum class RunEnd { done, stopped, failed };

struct RunResult {
  RunEnd end = RunEnd::done;

  // The error, as one sentence; empty unless failed.
  QString failure;
};

// The texts of the progress bar.
struct RunName {
  QString title;
  QString doing;
};

// Reports a task's progress, in task-specific units; false when the task must stop.
using RunProgress = std::function<bool(int done, int total)>;

// Runs `task` in a thread and returns when it has finished. Meanwhile the windows are responsive, but the user can only
// stop the task. `task` reports its progress, and throws Press::Cancelled or Refhost::Stopped when told to stop.
RunResult runWithProgress(const std::function<void(const RunProgress&)>& task, const RunName& name, const Texts& texts,
                          QWidget* parent);

}  // namespace Window
