#include "tests/support/growth.h"

#include <algorithm>
#include <limits>
#include <string>

namespace Testing {
namespace {

constexpr int factor = 10;
constexpr double mostGrowth = 40;

// Long enough for the coarsest clock, which ticks a hundred times a second.
constexpr double measurable = 0.03;

constexpr int attempts = 5;

// The processor time of one run, from as many runs as give a measurable time.
double timeOf(const Preparation& prepare, int size) {
  double time = 0;
  int runs = 0;
  for (; time < measurable; ++runs) {
    const std::function<void()> work = prepare(size);
    const double start = processorTime();
    work();
    time += processorTime() - start;
    if (testing::Test::HasFatalFailure()) break;
  }
  return time / runs;
}

}  // namespace

testing::AssertionResult growsLinearly(int size, const Preparation& prepare) {
  prepare(size)();  // what only the first time costs
  double few = std::numeric_limits<double>::infinity();
  double many = few;
  // What else the machine does can only add to a time, so that the least of some is the truest.
  for (int attempt = 0; attempt < attempts; ++attempt) {
    few = std::min(few, timeOf(prepare, size));
    many = std::min(many, timeOf(prepare, factor * size));
    testing::Test::RecordProperty("growth", std::to_string(many / few));
    if (many <= mostGrowth * few) return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << factor * size << " take " << many / few << " times the processor time of "
                                     << size << " (" << many << " s and " << few << " s)";
}

}  // namespace Testing
