#include "window/preferences/overlay_printing.h"

#include "host/overlay_job.h"
#include "press/error.h"
#include "press/job/capture.h"

#include <QScopeGuard>

namespace Window {
namespace {

void store(const Press::Capture& overlay, const ActionWorld& world) {
  // The overlay may be on the page, replaced or restored.
  const auto redraw = qScopeGuard([&world] { world.pages.redraw(); });
  std::optional<std::u16string> name;
  Refhost::UserActions& actions = world.session.actions();
  actions.actWithName({"print-overlay"}, [&] {
    name = Refhost::printIntoOverlay(world.preferences(), world.face, {overlay.pdf, overlay.thumbnail});
    actions.answer("created", name.has_value());
  });
  if (!name) return;
  const Texts texts = world.texts();
  world.messages.announce({texts("OVERLAY_TITLE"), texts("OVERLAY_DONE").arg(toQt(*name)), overlay.notes});
}

}  // namespace

void printIntoOverlay(const ActionWorld& world) {
  Press::Capture overlay;
  const auto task = [&overlay, file = world.job.file(),
                     effects = world.session.effects()](const RunProgress& progress) {
    overlay = Press::captureOverlay(file, effects);
    if (!progress(1, 1)) throw Press::Stopped();
  };
  const Texts texts = world.texts();
  const RunName name{texts("OVERLAY_TITLE"), texts("OVERLAY_MAKING").arg(world.job.name(texts))};
  if (world.run(task, name, "PRINT_STOPPED")) store(overlay, world);
}

}  // namespace Window
