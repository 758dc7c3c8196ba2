#include "window/preferences/overlay_printing.h"

#include "press/error.h"
#include "press/job/capture.h"
#include "window/preferences/overlay_making.h"

namespace Window {

void printIntoOverlay(const ActionWorld& world) {
  Press::Capture overlay;
  const auto task = [&overlay, file = world.job.file(),
                     effects = world.session.effects()](const RunProgress& progress) {
    overlay = Press::captureOverlay(file, effects);
    if (!progress(1, 1)) throw Press::Stopped();
  };
  const Texts texts = world.texts();
  const RunName name{texts("OVERLAY_TITLE"), texts("OVERLAY_MAKING").arg(world.job.name(texts))};
  if (!world.run(task, name, "PRINT_STOPPED")) return;
  const auto stored = storeOverlay(world, overlay, {});
  if (stored)
    world.messages.announce({texts("OVERLAY_TITLE"), texts("OVERLAY_DONE").arg(toQt(*stored)), overlay.notes});
}

}  // namespace Window
