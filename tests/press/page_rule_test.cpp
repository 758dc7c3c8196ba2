#include "press/error.h"
#include "press/pages/page_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using Press::PageRule;

namespace {

// The pages of a ten-page job that a rule includes, as digits; page ten is "X".
std::string pages(const char* rule) {
  const PageRule parsed(rule);
  std::string named;
  for (int page = 1; page <= 10; ++page)
    if (parsed.has(page)) named += page < 10 ? std::to_string(page) : "X";
  return named;
}

}  // namespace

TEST(PageRule, WordsNameAllEvenAndOddPages) {
  EXPECT_EQ(pages("All"), "123456789X");
  EXPECT_EQ(pages("Even"), "2468X");
  EXPECT_EQ(pages("Odd"), "13579");
}

TEST(PageRule, IsAllPagesByDefault) { EXPECT_TRUE(PageRule().has(7)); }

TEST(PageRule, ListsNamePagesAndRanges) {
  EXPECT_EQ(pages("3"), "3");
  EXPECT_EQ(pages("1,3,5-9"), "1356789");
  EXPECT_EQ(pages(" 1 , 3 - 4 "), "134");
}

TEST(PageRule, OpenRangesGoToTheEndsOfTheJob) {
  EXPECT_EQ(pages("8-"), "89X");
  EXPECT_EQ(pages("-3"), "123");
}

TEST(PageRule, ReversedRangesNameTheSamePages) { EXPECT_EQ(pages("6-4"), "456"); }

TEST(PageRule, NamingAPageTwiceIsNamingIt) { EXPECT_EQ(pages("2-5,4-6,5,5"), "23456"); }

TEST(PageRule, OrderDoesNotMatter) { EXPECT_EQ(pages("9,1-2,5"), "1259"); }

TEST(PageRule, PagesBeyondTheEndCountForNothing) {
  EXPECT_EQ(pages("9-20,99"), "9X");
  EXPECT_EQ(pages("5-99999999999999999999"), "56789X");
  EXPECT_EQ(pages("0,0-2"), "12");
}

TEST(PageRule, EmptyPlacesInAListArePassedOver) { EXPECT_EQ(pages(",2,,4,"), "24"); }

TEST(PageRule, WhatIsNoRuleIsRefusedWithASentence) {
  for (const char* text : {"", ",", "-", "1--3", "1-2-3", "a", "all", "even", "1;2", "1.5", "+1"})
    EXPECT_THROW(PageRule rule(text), Press::Error) << text;
  try {
    PageRule rule("1-2-3");
  } catch (const Press::Error& error) {
    EXPECT_STREQ(error.what(), "\"1-2-3\" does not say which pages: write All, Even, Odd, or numbers such as 1,3,5-9.");
  }
}

TEST(PageRule, ARefusalHasTheStartOfTheTextInWholeCharacters) {
  const auto shown = [](const std::string& text) {
    try {
      PageRule rule(text);
    } catch (const Press::Error& error) {
      const std::string sentence = error.what();
      return sentence.substr(0, sentence.find(" does not say"));
    }
    return std::string();
  };
  EXPECT_EQ(shown(std::string("a\0b\x1B\x7F", 5)), "\"a?b??\"");
  EXPECT_EQ(shown(std::string(60, 'x')), "\"" + std::string(60, 'x') + "\"");
  EXPECT_EQ(shown(std::string(61, 'x')), "\"" + std::string(60, 'x') + "...\"");
  EXPECT_EQ(shown(std::string(59, 'x') + "\u6F22"), "\"" + std::string(59, 'x') + "...\"");
  EXPECT_EQ(shown("\xFF"), "\"\uFFFD\"");
}

TEST(PageRule, ALongListCostsLittle) {
  std::string text;
  for (int number = 0; number < 1'000'000; ++number) text += std::to_string(2 * number) + ",";
  const PageRule rule(text);
  int named = 0;
  for (int page = 1; page <= 1'000'000; ++page) named += rule.has(page);
  EXPECT_EQ(named, 500'000);
}
