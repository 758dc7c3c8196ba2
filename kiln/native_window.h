// The native handle of a widget's window.
#pragma once

namespace Kiln {

#ifdef _WIN32
// A window handle (HWND); null while the widget has no window.
using NativeWindow = void*;
#else
// Stands in for a window handle on systems that have none. Owned by the host; lives as long as the widget.
class ScreenWindow {
 public:
  // The screen's horizontal logical pixels per inch; 0 when unknown. [plug-in, ready]
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
