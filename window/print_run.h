// Prints a job in the background, with a bar that tells how far it is and a way to stop it.
#pragma once

#include "press/print.h"
#include "window/texts.h"

#include <QString>

#include <filesystem>
#include <functional>

class QWidget;

namespace Window {

enum class PrintEnd { done, stopped, failed };

struct PrintResult {
  PrintEnd end = PrintEnd::done;

  // Why it failed, as one sentence; else empty.
  QString failure;
};

// Runs `job` on a thread of its own and returns when it is over. Meanwhile the windows stay alive, and the user can
// only stop it. `job` tells its progress, and throws Press::Cancelled when that says so; `name` is what the bar calls
// it.
PrintResult runWithProgress(const std::function<void(const Press::Progress&)>& job, const QString& name,
                            const Texts& texts, QWidget* parent);

// Prints `document` into `out` in that way.
PrintResult printWithProgress(const std::filesystem::path& document, const std::filesystem::path& out,
                              const Press::Effects& effects, const Texts& texts, QWidget* parent);

}  // namespace Window
