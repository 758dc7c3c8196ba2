// Ids, numbers and messages: pure functions.
#include "effect/sentence.h"
#include "effect/watermark/numbers.h"
#include "effect/watermark/record_id.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace {

using Effect::IdDraws;
using Effect::leadingInteger;
using Effect::recordId;
using Formats::toUtf16;

TEST(RecordId, PutsTheLowBitsOfEachNumberInItsPlace) {
  EXPECT_EQ(
      recordId(0x65F0ABCD, IdDraws{0x1234ABCD, 0xFFFF0001, 0x1FF, 0x2A0, 0x3B1, 0x4C2, 0x5D3, 0x6E4, 0x7F5, 0x806}),
      u"WM_65F0ABCD_ABCD_1_FFA0_B1C2D3E4F56");
}

TEST(RecordId, PadsNothingWithZeros) {
  EXPECT_EQ(recordId(0, IdDraws{}), u"WM_0_0_0_00_000000");
  EXPECT_EQ(recordId(10, IdDraws{0x10000, 0xF, 0x100, 1, 2, 3, 4, 5, 6, 7}), u"WM_A_0_F_01_234567");
}

TEST(RecordId, IsLongestWithAllBitsSet) {
  IdDraws draws;
  draws.fill(0xFFFFFFFF);
  EXPECT_EQ(recordId(0xFFFFFFFF, draws), u"WM_FFFFFFFF_FFFF_FFFF_FFFF_FFFFFFFFFFFF");
}

TEST(RecordIds, DifferFromOneAnother) {
  const std::regex form("WM_[0-9A-F]{1,8}_[0-9A-F]{1,4}_[0-9A-F]{1,4}_[0-9A-F]{2,4}_[0-9A-F]{6,12}");
  Effect::RecordIds ids;
  std::set<std::u16string> seen;
  for (int i = 0; i < 1000; ++i) {
    const std::u16string id = ids.next();
    EXPECT_TRUE(seen.insert(id).second);
    EXPECT_TRUE(std::regex_match(std::string(id.begin(), id.end()), form));
  }
}

TEST(RecordIds, OfTwoStoresOpenedAtOnceDiffer) {
  Effect::RecordIds one;
  Effect::RecordIds other;
  EXPECT_NE(one.next(), other.next());
}

TEST(RecordIds, DrawsAnewWhileTheIdIsTaken) {
  Effect::RecordIds ids;
  std::vector<std::u16string> drawn;
  const std::u16string id = ids.nextFree([&drawn](const std::u16string& each) {
    drawn.push_back(each);
    return drawn.size() < 3;
  });
  ASSERT_EQ(drawn.size(), 3U);
  EXPECT_EQ(id, drawn.back());
  EXPECT_NE(drawn[0], drawn[1]);
  EXPECT_NE(drawn[1], drawn[2]);
}

TEST(LeadingInteger, ReadsWhatTheTextBeginsWith) {
  EXPECT_EQ(leadingInteger(u"45"), 45);
  EXPECT_EQ(leadingInteger(u" \t-90 degrees"), -90);
  EXPECT_EQ(leadingInteger(u"+7"), 7);
  EXPECT_EQ(leadingInteger(u"007"), 7);
  EXPECT_EQ(leadingInteger(u"12.9"), 12);
}

TEST(LeadingInteger, OfNoNumberIsZero) {
  for (const char16_t* text : {u"", u"   ", u"-", u"abc", u"--1", u"\u0664\u0665"}) EXPECT_EQ(leadingInteger(text), 0);
}

TEST(LeadingInteger, BeyondThirtyTwoBitsIsTheNearest) {
  EXPECT_EQ(leadingInteger(u"2147483647"), 2147483647);
  EXPECT_EQ(leadingInteger(u"2147483648"), 2147483647);
  EXPECT_EQ(leadingInteger(u"-2147483648"), -2147483647 - 1);
  EXPECT_EQ(leadingInteger(std::u16string(1000, u'9')), 2147483647);
  EXPECT_EQ(leadingInteger(u"-" + std::u16string(1000, u'9')), -2147483647 - 1);
}

TEST(WideText, KeepsEveryCharacter) { EXPECT_EQ(toUtf16("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), u"aé€\U0001F600"); }

TEST(WideText, ReplacesWhatIsNoUtf8) {
  EXPECT_EQ(toUtf16("\xC3"), u"\uFFFD");
  EXPECT_EQ(toUtf16("\x80z"), u"\uFFFDz");
  EXPECT_EQ(toUtf16("\xE2\x82z"), u"\uFFFD\uFFFDz");
  EXPECT_EQ(toUtf16("\xE0\x80\x80"), u"\uFFFD");
  EXPECT_EQ(toUtf16("\xFFz"), u"\uFFFDz");
}

}  // namespace
