#include "tests/support/growth.h"

namespace {

using Testing::growsLinearly;

volatile int sink = 0;

void keepBusy(int steps) {
  for (int step = 0; step < steps; ++step) sink = sink + 1;
}

TEST(Growth, OfWorkInProportionToItsSizeIsLinear) {
  EXPECT_TRUE(growsLinearly(1'000'000, [](int size) { return [size] { keepBusy(size); }; }));
}

TEST(Growth, OfWorkThatIsTooShortForTheClockIsMeasuredToo) {
  EXPECT_TRUE(growsLinearly(1'000, [](int size) { return [size] { keepBusy(size); }; }));
}

TEST(Growth, OfWorkInProportionToTheSquareIsNotLinear) {
  EXPECT_FALSE(growsLinearly(1'000, [](int size) { return [size] { keepBusy(size * size / 4); }; }));
}

}  // namespace
