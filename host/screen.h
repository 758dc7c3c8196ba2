// The screen that widgets are shown on, as plug-ins see it.
#pragma once

#include "kiln/native_window.h"

#include <optional>

namespace Refhost {

#ifdef _WIN32

// The system's own, which tells plug-ins its pixels per inch itself.
class Screen {
 public:
  // Throws std::runtime_error, one sentence, when the system does not report the wanted pixels per inch to this
  // process; without any, whatever it reports serves.
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
