// "Print into overlay...": makes an overlay of the current job.
#include "press/error.h"
#include "press/job/capture.h"
#include "window/background_run.h"
#include "window/preferences_window.h"

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

// Runs the print-time step in a separate job, so that the plug-in's settings do not stay in the preferences. When the
// plug-in prepares no destination, the user has cancelled or was told why.
void PreferencesWindow::store(const Press::Capture& overlay) {
  Refhost::Options options = preferences().options();
  options.mode = Refhost::Mode::prePrint;
  const Refhost::TracePairs values = preferences().model().values();
  options.properties.insert(options.properties.end(), values.begin(), values.end());
  options.properties.insert(
      options.properties.end(),
      {{u"OverlayImageName", u""}, {u"OverlayDestFileName", u""}, {u"CancelJob", u"False"}, {u"PrintJob", u"Overlay"}});
  Refhost::Preferences job(options, *this);
  job.trace().listen([this](const Refhost::TraceEvent& event) { preferences().trace().record(event); });
  job.open();
  if (job.model().value(u"OvlDestCreated") != u"True") return;
  try {
    job.writeJob(overlay.pdf, overlay.thumbnail);
  } catch (...) {
    job.set(u"CancelJob", u"True");  // restores an overlay that was to be replaced
    takeUp({});
    throw;
  }
  takeUp({});
  const QString name = toQt(job.model().value(u"OverlayImageName").value_or(u""));
  announce({texts()("OVERLAY_TITLE"), texts()("OVERLAY_DONE").arg(name), overlay.notes});
}

}  // namespace Window
