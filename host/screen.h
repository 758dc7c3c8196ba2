// The screen of the widgets, for plug-ins.
#pragma once

#include "kiln/native_window.h"

#include <optional>

namespace Refhost {

#ifdef _WIN32

// The system's screen, which plug-ins query themselves.
class Screen {
 public:
  // Throws std::runtime_error, one sentence, when the system does not report the requested pixels per inch to this
  // process; any value is accepted when none is requested.
  explicit Screen(std::optional<int> pixelsPerInch);
  Kiln::NativeWindow window() const;
};

#else

class Screen final : public Kiln::ScreenWindow {
 public:
  explicit Screen(std::optional<int> pixelsPerInch) : dpi(pixelsPerInch.value_or(96)) {}
  int horizontalPixelsPerInch() const override { return dpi; }
  Kiln::NativeWindow window() const { return this; }

 private:
  int dpi;
};

#endif

}  // namespace Refhost
