// Runs long tasks in the background, with a progress bar that can stop them.
#pragma once

#include "window/language/texts.h"

#include <QString>

#include <chrono>
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

// What is done sooner shows no bar at all.
inline constexpr std::chrono::milliseconds runPatience{300};

// Runs `task` on a thread of its own and returns when it is over. Meanwhile the windows stay alive, and the user can
// only stop it. `task` tells its progress, and throws Press::Stopped or Refhost::Stopped when that says so.
RunResult runWithProgress(const std::function<void(const RunProgress&)>& task, const RunName& name, const Texts& texts,
                          QWidget* parent, std::chrono::milliseconds patience = runPatience);

}  // namespace Window
