#include "kiln/native_window.h"
#include "slots.h"

namespace {

TEST(SlotOrder, OfScreenWindow) { expectSlots(0, {slotOf(&Kiln::ScreenWindow::horizontalPixelsPerInch)}); }

}  // namespace
