// How the cost of work grows with its size. Times alone say nothing on a machine that may be slow or busy; what ten
// times the size costs, compared in one process, does.
#pragma once

#include <gtest/gtest.h>

#include <functional>

namespace Testing {

// Prepares work of a size and returns the work itself. Only the work is measured; it may be done more than once, each
// time newly prepared.
using Preparation = std::function<std::function<void()>(int size)>;

// The processor time of all threads of this process so far, in seconds.
double processorTime();

// Whether ten times the size takes about ten times the processor time: at most forty, since caches are small; a cost
// that grows with the square takes a hundred. The test's report has the ratio, as the property "growth".
testing::AssertionResult growsLinearly(int size, const Preparation& prepare);

}  // namespace Testing
