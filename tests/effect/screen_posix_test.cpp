#include "effect/screen_scale.h"

#include <gtest/gtest.h>

namespace {

struct FixedScreen final : Kiln::ScreenWindow {
  explicit FixedScreen(int pixelsPerInch) : dpi(pixelsPerInch) {}
  int horizontalPixelsPerInch() const override { return dpi; }
  int dpi;
};

// A single test, since the first known factor is cached for the life of the process.
TEST(ScreenScale, KeepsTheFirstFactorThatCanBeHad) {
  EXPECT_FLOAT_EQ(Effect::screenScaleFactor(nullptr), 1.0F);
  const FixedScreen unknown(0);
  EXPECT_FLOAT_EQ(Effect::screenScaleFactor(&unknown), 1.0F);
  const FixedScreen large(120);
  EXPECT_FLOAT_EQ(Effect::screenScaleFactor(&large), 1.25F);
  EXPECT_FLOAT_EQ(Effect::screenScaleFactor(nullptr), 1.25F);
  const FixedScreen larger(192);
  EXPECT_FLOAT_EQ(Effect::screenScaleFactor(&larger), 1.25F);
}

}  // namespace
