#include "window/page/zoom.h"

#include <algorithm>
#include <iterator>

namespace Window {
namespace {

constexpr double usualFactors[] = {0.1, 0.15, 0.25, 0.33, 0.5, 0.67, 0.75, 1, 1.25, 1.5, 2, 3, 4};

// A factor that differs by less looks like the same.
constexpr double sameFactor = 0.01;

}  // namespace

double nextFactor(double factor, bool isLarger) {
  if (isLarger) {
    const double* next = std::upper_bound(std::begin(usualFactors), std::end(usualFactors), factor * (1 + sameFactor));
    return next == std::end(usualFactors) ? std::max(factor, *std::prev(next)) : *next;
  }
  const double* here = std::lower_bound(std::begin(usualFactors), std::end(usualFactors), factor * (1 - sameFactor));
  return here == std::begin(usualFactors) ? std::min(factor, *here) : *std::prev(here);
}

}  // namespace Window
