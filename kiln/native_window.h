// The native window behind a widget, for what only the system knows of it.
#pragma once

namespace Kiln {

#ifdef _WIN32
// A window handle (HWND); null while the widget has no window.
using NativeWindow = void*;
#else
// What stands for a window where there are no window handles. It belongs to the host and lives as long as the widget.
class ScreenWindow {
 public:
  // The screen's horizontal logical pixels per inch; 0 when the host cannot tell. [plug-in, ready]
  virtual int horizontalPixelsPerInch() const = 0;

 protected:
  ScreenWindow() = default;
  ScreenWindow(const ScreenWindow&) = default;
  ScreenWindow& operator=(const ScreenWindow&) = default;
  ~ScreenWindow() = default;
};

// Null while the widget has no window.
using NativeWindow = const ScreenWindow*;
#endif

}  // namespace Kiln
