#include "effect/screen_scale.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

// A single test, since the first known factor is cached for the life of the process, which starts with --dpi 120.
TEST(ScreenScale, KeepsTheFirstFactorThatCanBeHad) {
  EXPECT_FLOAT_EQ(Effect::screenScaleFactor(nullptr), 1.0F);
  const auto noWindow = reinterpret_cast<HWND>(0x7654);
  EXPECT_FLOAT_EQ(Effect::screenScaleFactor(noWindow), 1.0F);
  EXPECT_FLOAT_EQ(Effect::screenScaleFactor(GetDesktopWindow()), 1.25F);
  EXPECT_FLOAT_EQ(Effect::screenScaleFactor(nullptr), 1.25F);
}

}  // namespace
