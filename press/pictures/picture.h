#pragma once

#include <cstdint>
#include <vector>

namespace Press {

// A rendered page: rows from the top, without padding.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> argb;  // 0xAARRGGBB, opaque
};

}  // namespace Press
