// The screen that widgets are shown on, as plug-ins see it.
#pragma once

#include "kiln/native_window.h"

namespace Refhost {

#ifdef _WIN32

// The system tells its own pixels per inch; `dpi` is what the run asked for, which only the system's settings change.
class Screen {
 public:
  explicit Screen(int dpi) : wanted(dpi) {}
  Kiln::NativeWindow window() const;

 private:
  int wanted;
};

#else

class Screen final : public Kiln::ScreenWindow {
 public:
  explicit Screen(int pixelsPerInch) : dpi(pixelsPerInch) {}
  int horizontalPixelsPerInch() const override { return dpi; }
  Kiln::NativeWindow window() const { return this; }

 private:
  int dpi;
};

#endif

}  // namespace Refhost
