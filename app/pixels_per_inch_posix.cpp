#include "app/pixels_per_inch.h"

namespace App {

// On POSIX systems the host itself reports the resolution.
std::optional<int> reportPixelsPerInch(int) { return std::nullopt; }

}  // namespace App
