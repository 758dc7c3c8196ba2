#include "formats/text.h"

#include <gtest/gtest.h>

namespace {

using Formats::toUtf16;
using Formats::toUtf8;

TEST(Unicode, EveryUnitComesBack) {
  for (unsigned unit = 0; unit < 0x10000; ++unit) {
    const std::u16string text{u'a', static_cast<char16_t>(unit), u'b'};
    ASSERT_EQ(toUtf16(toUtf8(text)), text) << unit;
  }
}

TEST(Unicode, PairsAreOneCharacter) {
  EXPECT_EQ(toUtf8(u"\U0001F600"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(toUtf16("\xF0\x9F\x98\x80"), u"\U0001F600");
  EXPECT_EQ(toUtf8(std::u16string{char16_t(0xDE00), char16_t(0xD83D)}), "\xED\xB8\x80\xED\xA0\xBD");
}

TEST(Unicode, WhatIsNoUtf8IsReplaced) {
  EXPECT_EQ(toUtf16("a\xFF"), u"a\uFFFD");
  EXPECT_EQ(toUtf16("\xC3"), u"\uFFFD");
  EXPECT_EQ(toUtf16("\xC0\x80"), u"\uFFFD\uFFFD");
  EXPECT_EQ(toUtf16("\xF4\x90\x80\x80").front(), u'\uFFFD');
  EXPECT_EQ(toUtf16("\xE6\x97z"), u"\uFFFD\uFFFDz");
}

}  // namespace
