#include "app/pixels_per_inch.h"

namespace App {

// There it is the host that tells plug-ins.
std::optional<int> reportPixelsPerInch(int) { return std::nullopt; }

}  // namespace App
