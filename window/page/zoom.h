// How large the page is shown.
#pragma once

namespace Window {

struct Zoom {
  enum class Kind { page, width, size };

  Kind kind = Kind::page;  // fits the whole page, or its width, or has a size
  double factor = 1;       // of the true size, for `Kind::size`

  friend bool operator==(const Zoom&, const Zoom&) = default;
};

// The next of the usual factors above or below this one; beyond the last of them, this one.
double nextFactor(double factor, bool isLarger);

}  // namespace Window
