#include "effect/screen_scale.h"

namespace Effect {

float scaleOf(int pixelsPerInch) {
  constexpr int standard = 96;
  if (pixelsPerInch <= standard) return 1.0F;
  const int hundredths = (pixelsPerInch * 100 + standard / 2) / standard;
  return static_cast<float>(hundredths) / 100.0F;
}

float screenScaleFactor(Kiln::NativeWindow window) {
  static std::optional<float> known;
  if (known) return *known;
  if (window == nullptr) return 1.0F;
  const auto dpi = horizontalPixelsPerInch(window);
  if (!dpi) return 1.0F;
  known = scaleOf(*dpi);
  return *known;
}

}  // namespace Effect
