#include "effect/screen_scale.h"

#include <windows.h>

namespace Effect {

std::optional<int> horizontalPixelsPerInch(Kiln::NativeWindow window) {
  const HWND handle = static_cast<HWND>(window);
  const HDC context = GetDC(handle);
  if (context == nullptr) return std::nullopt;
  const int dpi = GetDeviceCaps(context, LOGPIXELSX);
  ReleaseDC(handle, context);
  return dpi;
}

}  // namespace Effect
