// The saved texts of the dialog for several overlays, and the page rules.
#include "formats/multiple_overlay_details.h"
#include "formats/text.h"
#include "tests/support/growth.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace {

using namespace Formats;
using testing::ElementsAre;

const auto allAreThere = [](std::u16string_view) { return true; };

std::u16string pathInStore(std::u16string_view label) { return u"/store/" + std::u16string(label); }

std::u16string sourceFiles(const SlotContents& slots) {
  return sourceFilesOf(slots, [&slots](std::size_t slot) { return pathInStore(slots[slot].label); });
}

SlotContents slotsOf(const std::vector<SlotContent>& filled) {
  SlotContents slots;
  std::copy(filled.begin(), filled.end(), slots.begin());
  return slots;
}

TEST(MultipleDetails, HaveAnEntryForEveryOneOfEightSlots) {
  const std::u16string value = detailsOf(slotsOf({{u"01234.opa", u"All"}}));
  EXPECT_EQ(value, u"01234.opa;All$;$;$;$;$;$;$;$");
  EXPECT_EQ(value.size(), 28U);
}

TEST(MultipleDetails, KeepTheSlotsOrder) {
  EXPECT_EQ(detailsOf(slotsOf({{u"1", u"Odd"},
                               {u"2", u"Even"},
                               {u"3", u"1,3,5-9"},
                               {u"4", u"4"},
                               {u"5", u"5"},
                               {u"6", u"6"},
                               {u"7", u"7"},
                               {u"8", u""}})),
            u"1;Odd$2;Even$3;1,3,5-9$4;4$5;5$6;6$7;7$8;$");
}

TEST(SourceFiles, HaveThePathsOfTheSlotsWithAnOverlayAndPages) {
  EXPECT_EQ(sourceFiles(slotsOf({{u"a.opa", u"All"}, {u"", u"Even"}, {u"b.opa", u""}, {u"c.opa", u"2-3"}})),
            u"/store/a.opa;All$/store/c.opa;2-3$");
}

TEST(SourceFiles, OfFreeSlotsAreEmpty) { EXPECT_EQ(sourceFiles({}), u""); }

TEST(ReadingDetails, OfAnEmptyValueIsForTheDefaults) { EXPECT_EQ(readDetails(u"", u"d", allAreThere), std::nullopt); }

TEST(ReadingDetails, FillsTheSlotsInOrder) {
  EXPECT_EQ(readDetails(u"x;Odd$y;Even$;$;$z;1-2$;$;$w;8$", u"d", allAreThere),
            slotsOf({{u"x", u"Odd"}, {u"y", u"Even"}, {}, {}, {u"z", u"1-2"}, {}, {}, {u"w", u"8"}}));
}

TEST(ReadingDetails, SplitsAnEntryAtItsFirstSemicolon) {
  EXPECT_EQ(readDetails(u"x;1;2$", u"d", allAreThere), slotsOf({{u"x", u"1;2"}}));
}

TEST(ReadingDetails, TakesALastEntryWithoutADollar) {
  EXPECT_EQ(readDetails(u"x;All$y;Odd", u"d", allAreThere), slotsOf({{u"x", u"All"}, {u"y", u"Odd"}}));
}

TEST(ReadingDetails, SkipsAnEntryWithoutASemicolonWithItsSlot) {
  EXPECT_EQ(readDetails(u"x$y;Even$", u"d", allAreThere), slotsOf({{}, {u"y", u"Even"}}));
  EXPECT_EQ(readDetails(u"x;All$$$z;3$", u"d", allAreThere), slotsOf({{u"x", u"All"}, {}, {}, {u"z", u"3"}}));
}

TEST(ReadingDetails, OfAValueWithoutAnySemicolonLeavesEverySlotFree) {
  EXPECT_EQ(readDetails(u"rubbish", u"d", allAreThere), SlotContents());
  EXPECT_EQ(readDetails(u"$", u"d", allAreThere), SlotContents());
}

TEST(ReadingDetails, GivesAFirstSlotWithoutALabelTheDefaultOverlayOnAllPages) {
  EXPECT_EQ(readDetails(u";$y;Even$", u"d", allAreThere), slotsOf({{u"d", u"All"}, {u"y", u"Even"}}));
  EXPECT_EQ(readDetails(u";Odd$", u"d", allAreThere), slotsOf({{u"d", u"All"}}));
  EXPECT_EQ(readDetails(u";$y;Even$", u"", allAreThere), slotsOf({{}, {u"y", u"Even"}}));
}

TEST(ReadingDetails, LeavesAnotherSlotWithoutALabelFree) {
  EXPECT_EQ(readDetails(u"x;All$;Even$;1-3$", u"d", allAreThere), slotsOf({{u"x", u"All"}}));
}

TEST(ReadingDetails, TakesRulesOfOtherSlotsAsTheyAre) {
  EXPECT_EQ(readDetails(u"x;1-3$y;All$z;Even$", u"d", allAreThere),
            slotsOf({{u"x", u"1-3"}, {u"y", u"All"}, {u"z", u"Even"}}));
}

TEST(ReadingDetails, OfOneOverlayThatIsGoneIsForTheDefaults) {
  const auto isThere = [](std::u16string_view label) { return label != u"gone"; };
  for (const char16_t* value : {u"gone;All$", u"x;All$gone;Even$", u"x;All$;$;$;$;$;$;$gone;8$", u"x;All$gone;"})
    EXPECT_EQ(readDetails(value, u"d", isThere), std::nullopt);
  EXPECT_NE(readDetails(u"x;All$gone$", u"d", isThere), std::nullopt);
}

TEST(ReadingDetails, AsksNoFurtherThanTheFirstOverlayThatIsGone) {
  std::vector<std::u16string> asked;
  readDetails(u"x;All$gone;Even$y;3$", u"d", [&asked](std::u16string_view label) {
    asked.emplace_back(label);
    return label != u"gone";
  });
  EXPECT_THAT(asked, ElementsAre(u"x", u"gone"));
}

TEST(ReadingDetails, OfANinthEntryHasNoSlotButItsLabelCounts) {
  const std::u16string eight = u"a;All$b;Even$c;3$d;4$e;5$f;6$g;7$h;8$";
  EXPECT_EQ(readDetails(eight + u"i;9$", u"x", allAreThere), readDetails(eight, u"x", allAreThere));
  EXPECT_EQ(readDetails(eight + u"i;9$", u"x", [](std::u16string_view label) { return label != u"i"; }), std::nullopt);
}

std::u16string repeated(std::u16string_view entry, std::size_t times) {
  std::u16string value;
  value.reserve(entry.size() * times);
  while (times-- > 0) value += entry;
  return value;
}

TEST(ReadingDetails, TakesTimeInProportionToTheValue) {
  for (const char16_t* entry : {u"x;1$", u"$", u";"}) {
    EXPECT_TRUE(Testing::growsLinearly(20'000, [entry](int count) {
      return [value = repeated(entry, static_cast<std::size_t>(count))] {
        int questions = 0;
        readDetails(value, u"d", [&questions](std::u16string_view) { return ++questions > 0; });
        EXPECT_LE(questions, 1);
      };
    }));
  }
}

// Contents that the dialog can save: labels without separators, and rules only with overlays.
SlotContents randomSlots(std::mt19937& random) {
  const auto below = [&random](std::size_t end) { return std::size_t{random()} % end; };
  const auto text = [&](std::u16string_view units, std::size_t least) {
    std::u16string made;
    for (std::size_t left = least + below(12); left > 0; --left) made += units[below(units.size())];
    return made;
  };
  SlotContents slots;
  for (std::size_t i = 0; i < slots.size(); ++i) {
    if (i > 0 && below(3) == 0) continue;
    slots[i].label = text(u"01289.opaÄ語\xD83D\xDE00 ,-", 1);
    slots[i].pages = i < masterSlots ? std::u16string(firstRule(i)) : text(u"0123456789,-", 0);
  }
  return slots;
}

TEST(MultipleDetails, ReadBackGiveTheSameSlots) {
  std::mt19937 random(8);
  for (int i = 0; i < 2000; ++i) {
    const SlotContents slots = randomSlots(random);
    const std::u16string value = detailsOf(slots);
    EXPECT_EQ(readDetails(value, u"d", allAreThere), slots) << Formats::toUtf8(value);
  }
}

TEST(PageList, HasDigitsCommasAndHyphensAlone) {
  for (const char16_t* list : {u"", u"1", u"1-3,5", u"1,3,5-9", u"9-1", u",,--", u"00000000000000000000"})
    EXPECT_TRUE(isPageList(list));
  for (const char16_t* list : {u"1;2", u"a", u"1 2", u"All", u"1\u20133", u"\uFF11", u"1$", u"1.5", u"1\n"})
    EXPECT_FALSE(isPageList(list));
}

TEST(SecondMaster, HasThePagesThatTheFirstLeaves) {
  EXPECT_EQ(ruleBeside(u"Even", u"Even", true), u"Odd");
  EXPECT_EQ(ruleBeside(u"Odd", u"Odd", true), u"Even");
  EXPECT_EQ(ruleBeside(u"Even", u"Odd", true), u"Odd");
  EXPECT_EQ(ruleBeside(u"Odd", u"1-3", true), u"Even");
}

TEST(SecondMaster, KeepsItsPagesBesideAFirstOnAllOrOther) {
  EXPECT_EQ(ruleBeside(u"All", u"Even", true), u"Even");
  EXPECT_EQ(ruleBeside(u"All", u"All", true), u"All");
  EXPECT_EQ(ruleBeside(u"1-3", u"Odd", true), u"Odd");
}

TEST(SecondMaster, WhileOneIsFreeLeavesOnlyEqualPages) {
  EXPECT_EQ(ruleBeside(u"Even", u"Even", false), u"Odd");
  EXPECT_EQ(ruleBeside(u"Odd", u"Odd", false), u"Even");
  EXPECT_EQ(ruleBeside(u"Even", u"", false), u"");
  EXPECT_EQ(ruleBeside(u"", u"Odd", false), u"Odd");
  EXPECT_EQ(ruleBeside(u"", u"", false), u"");
}

}  // namespace
