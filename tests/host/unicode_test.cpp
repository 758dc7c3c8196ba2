#include "host/unicode.h"

#include <gtest/gtest.h>

namespace {

using Refhost::toNarrow;
using Refhost::toWide;

TEST(Unicode, EveryUnitComesBack) {
  for (unsigned unit = 0; unit < 0x10000; ++unit) {
    const std::u16string text{u'a', static_cast<char16_t>(unit), u'b'};
    ASSERT_EQ(toWide(toNarrow(text)), text) << unit;
  }
}

TEST(Unicode, PairsAreOneCharacter) {
  EXPECT_EQ(toNarrow(u"\U0001F600"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(toWide("\xF0\x9F\x98\x80"), u"\U0001F600");
  EXPECT_EQ(toNarrow(std::u16string{char16_t(0xDE00), char16_t(0xD83D)}), "\xED\xB8\x80\xED\xA0\xBD");
}

TEST(Unicode, WhatIsNoUtf8IsReplaced) {
  EXPECT_EQ(toWide("a\xFF"), u"a\uFFFD");
  EXPECT_EQ(toWide("\xC3"), u"\uFFFD");
  EXPECT_EQ(toWide("\xC0\x80"), u"\uFFFD\uFFFD");
  EXPECT_EQ(toWide("\xF4\x90\x80\x80").front(), u'\uFFFD');
  EXPECT_EQ(toWide("\xE6\x97z"), u"\uFFFD\uFFFDz");
}

}  // namespace
