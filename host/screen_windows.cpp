#include "formats/sentences.h"
#include "host/screen.h"

#include <windows.h>

#include <stdexcept>
#include <string>

namespace Refhost {

// The desktop window stands in for each widget's: plug-ins only query its screen.
Kiln::NativeWindow Screen::window() const { return GetDesktopWindow(); }

Screen::Screen(std::optional<int> pixelsPerInch) {
  if (!pixelsPerInch) return;
  const HDC context = CreateICW(L"DISPLAY", nullptr, nullptr, nullptr);
  const int reported = GetDeviceCaps(context, LOGPIXELSX);
  DeleteDC(context);
  if (reported != *pixelsPerInch)
    throw std::runtime_error(Formats::sentence(
        "Windows reports {1} pixels per inch, not the wanted {2}; it lets a program see 96, or those of the screen.",
        reported, *pixelsPerInch));
}

}  // namespace Refhost
