// "Print into overlay...": makes an overlay of the current job.
#include "host/overlay_job.h"
#include "press/job/capture.h"
#include "press/error.h"
#include "press/job/capture.h"
#include "window/background_run.h"
#include "window/page_panel.h"
#include "window/preferences_window.h"

#include <QScopeGuard>

namespace Window {

// Captured before the destination is prepared, since the job may print on the overlay that it replaces.
void PreferencesWindow::printIntoOverlay() {
  Press::Capture overlay;
  const auto task = [&overlay, file = document, effects = effects()](const RunProgress& progress) {
    overlay = Press::captureOverlay(file, effects);
    if (!progress(1, 1)) throw Press::Stopped();
  };
  const QString title = texts()("OVERLAY_TITLE");
  const RunResult result = runWithProgress(task, {title, texts()("OVERLAY_MAKING").arg(nameOfJob())}, texts(), this);
  switch (result.end) {
    case RunEnd::done: return store(overlay);
    case RunEnd::stopped: return announce({title, texts()("PRINT_STOPPED")});
    case RunEnd::failed: return showFailure(result.failure.toStdString());
  }
}

void PreferencesWindow::store(const Press::Capture& overlay) {
  // Whether it was made or restored, the overlay may be on the page.
  const auto redraw = qScopeGuard([this] { pages->redraw(); });
  const auto name = Refhost::printIntoOverlay(preferences(), *this, {overlay.pdf, overlay.thumbnail});
  if (name) announce({texts()("OVERLAY_TITLE"), texts()("OVERLAY_DONE").arg(toQt(*name)), overlay.notes});
}

}  // namespace Window
