#include "app/system/installed_fonts.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

TEST(InstalledFonts, AreNamedOnceEachInOrder) {
  const auto fonts = App::installedFonts();
  ASSERT_TRUE(fonts.has_value());
  EXPECT_FALSE(fonts->empty());
  EXPECT_TRUE(std::ranges::is_sorted(*fonts));
  EXPECT_EQ(std::ranges::adjacent_find(*fonts), fonts->end());
  for (const std::u16string& name : *fonts) {
    EXPECT_FALSE(name.empty());
    EXPECT_FALSE(name.starts_with(u'@'));
  }
}

}  // namespace
