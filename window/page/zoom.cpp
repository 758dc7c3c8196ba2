#include "window/page/zoom.h"

#include <algorithm>
#include <iterator>

namespace Window {
namespace {

constexpr double factors[] = {0.1, 0.15, 0.25, 0.33, 0.5, 0.67, 0.75, 1, 1.25, 1.5, 2, 3, 4};

// A factor that differs by less looks like the same.
constexpr double nearly = 0.01;

}  // namespace

double nextFactor(double factor, bool isLarger) {
  if (isLarger) {
    const double* next = std::upper_bound(std::begin(factors), std::end(factors), factor * (1 + nearly));
    return next == std::end(factors) ? *std::prev(next) : *next;
  }
  const double* here = std::lower_bound(std::begin(factors), std::end(factors), factor * (1 - nearly));
  return here == std::begin(factors) ? *here : *std::prev(here);
}

}  // namespace Window
