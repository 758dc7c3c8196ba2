// The screen scale factor, which sizes swatches and thumbnails.
#pragma once

#include "kiln/native_window.h"

#include <optional>

namespace Effect {

// The factor of the window's screen: its horizontal pixels per inch divided by 96, rounded to hundredths, at least 1.
// The first known factor is cached for the life of the process and returned for all windows. 1, not cached, when
// `window` is null or its screen is unknown.
float screenScaleFactor(Kiln::NativeWindow window);

// The factor for a number of pixels per inch.
float scaleOf(int pixelsPerInch);

// The horizontal logical pixels per inch of the window's screen; nothing when unknown. One source file per system,
// under platform/.
std::optional<int> horizontalPixelsPerInch(Kiln::NativeWindow window);

}  // namespace Effect
