#include "effect/screen_scale.h"

namespace Effect {

std::optional<int> horizontalPixelsPerInch(Kiln::NativeWindow window) {
  const int dpi = window->horizontalPixelsPerInch();
  return dpi > 0 ? std::optional(dpi) : std::nullopt;
}

}  // namespace Effect
