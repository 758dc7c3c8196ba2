#include "press/job/effects.h"

#include "formats/text.h"

#include <gtest/gtest.h>

using Press::Effects;
using Press::effectsFromProperties;

TEST(Effects, NothingIsOnByDefault) {
  EXPECT_EQ(effectsFromProperties({}), Effects{});
  EXPECT_FALSE(Effects{}.any());
}

TEST(Effects, EachPropertyHasItsOwnWordForOn) {
  EXPECT_EQ(effectsFromProperties({{"MirrorImage", "MirrorImage"}}), Effects{.mirrorImage = true});
  EXPECT_EQ(effectsFromProperties({{"NegativeImage", "Negative"}}), Effects{.negativeImage = true});
  EXPECT_EQ(effectsFromProperties({{"Rotate180", "Rotate180"}}), Effects{.rotate180 = true});
}

TEST(Effects, A3LedgerIsSwitchedOnByTheWordRotate180) {
  EXPECT_EQ(effectsFromProperties({{"Rotate180ForA3LD", "Rotate180"}}), Effects{.rotate180ForA3Ledger = true});
  EXPECT_EQ(effectsFromProperties({{"Rotate180ForA3LD", "Rotate180ForA3LD"}}), Effects{});
}

TEST(Effects, EverythingElseIsOff) {
  for (const char* value : {"", "None", "True", "NegativeImage", "mirrorimage", "rotate180", "Rotate180 "})
    EXPECT_EQ(effectsFromProperties({{"MirrorImage", value}, {"NegativeImage", value}, {"Rotate180", value}}),
              Effects{})
        << value;
}

TEST(Effects, EachPageEffectIsOnByItsPropertyAndMakesAPageDifferent) {
  for (const Press::PageEffect& effect : Press::pageEffects) {
    Effects expected;
    expected.*effect.isOn = true;
    EXPECT_EQ(effectsFromProperties({{Formats::toUtf8(effect.setting.property), Formats::toUtf8(effect.setting.on)}}),
              expected);
    EXPECT_TRUE(expected.any());
    EXPECT_TRUE(expected.anyPageEffect());
    EXPECT_EQ(expected.anyPaint(), !effect.paint.blendMode.empty());
  }
  EXPECT_FALSE(Effects{.pagesOnSheet = 2}.anyPageEffect());
}

TEST(Effects, AnyOneMakesAPageDifferent) {
  EXPECT_TRUE(Effects{.mirrorImage = true}.any());
  EXPECT_TRUE(Effects{.negativeImage = true}.any());
  EXPECT_TRUE(Effects{.rotate180 = true}.any());
  EXPECT_TRUE(Effects{.rotate180ForA3Ledger = true}.any());
}
