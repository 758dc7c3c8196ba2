// The screen scale factor, by which swatches and thumbnails are sized.
#pragma once

#include "kiln/native_window.h"

#include <optional>

namespace Effect {

// The factor of the window's screen: its horizontal pixels per inch by 96, in hundredths, never below 1. The first one
// that can be had is kept for the life of the process and returned from then on, whatever the window. 1 for no window,
// or when its screen cannot be had; that is not kept.
float screenScaleFactor(Kiln::NativeWindow window);

// The factor of so many pixels per inch.
float scaleOf(int pixelsPerInch);

// The horizontal logical pixels per inch of the window's screen; nothing when they cannot be had. One source file per
// system, under platform/.
std::optional<int> horizontalPixelsPerInch(Kiln::NativeWindow window);

}  // namespace Effect
