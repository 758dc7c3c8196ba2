// The plug-in's independent units.
#include "effect/list_order.h"
#include "effect/screen_scale.h"
#include "host/chrome/strings.h"
#include "host/widgets/list.h"

#include <gtest/gtest.h>

namespace {

TEST(ScreenScale, IsInHundredthsAndNeverBelowOne) {
  EXPECT_FLOAT_EQ(Effect::scaleOf(72), 1.0F);
  EXPECT_FLOAT_EQ(Effect::scaleOf(96), 1.0F);
  EXPECT_FLOAT_EQ(Effect::scaleOf(97), 1.01F);
  EXPECT_FLOAT_EQ(Effect::scaleOf(120), 1.25F);
  EXPECT_FLOAT_EQ(Effect::scaleOf(144), 1.5F);
  EXPECT_FLOAT_EQ(Effect::scaleOf(192), 2.0F);
}

class ListOrder : public testing::Test {
 protected:
  std::u16string ordered(std::initializer_list<const char16_t*> labels, std::int32_t fixed) {
    Refhost::ListData list(strings);
    for (const auto* label : labels) list.append(label, label);
    Effect::orderByLabel(list, fixed);
    std::u16string text;
    for (std::int32_t i = 0; i < list.count(); ++i) text += list.at(i)->value().str() + u"|";
    return text;
  }

  Refhost::ChromeFolders chrome{RESOURCES_FOLDER};
  Refhost::StringTables strings{chrome, "en-US"};
};

TEST_F(ListOrder, IgnoresCaseAndKeepsTheFirstEntries) {
  EXPECT_EQ(ordered({u"zero", u"delta", u"Alpha", u"CHARLIE", u"bravo"}, 1), u"zero|Alpha|bravo|CHARLIE|delta|");
  EXPECT_EQ(ordered({u"z", u"y", u"b", u"a"}, 2), u"z|y|a|b|");
}

TEST_F(ListOrder, PutsTheShorterLabelFirstAndComparesByUnits) {
  EXPECT_EQ(ordered({u"ab", u"abc", u"a"}, 0), u"a|ab|abc|");
  EXPECT_EQ(ordered({u"\uFF21", u"\U0001F600", u"b"}, 0), u"b|\U0001F600|\uFF21|");
}

TEST_F(ListOrder, KeepsEqualLabelsInTheirOrder) { EXPECT_EQ(ordered({u"B", u"a", u"b", u"A"}, 0), u"a|A|B|b|"); }

TEST_F(ListOrder, GoesByTheTextThatIsShown) {
  EXPECT_EQ(ordered({u"zebra", u"$IDS_NONE;", u"apple"}, 0), u"apple|$IDS_NONE;|zebra|");
}

TEST_F(ListOrder, LowersLatinGreekAndCyrillicCapitals) {
  EXPECT_EQ(ordered({u"ÄB", u"äA", u"Ωb", u"ωA", u"Жб", u"жА", u"Šb", u"šA", u"Șb", u"șA", u"Ạb", u"ạA"}, 0),
            u"äA|ÄB|šA|Šb|șA|Șb|ωA|Ωb|жА|Жб|ạA|Ạb|");
  EXPECT_EQ(Effect::lowerCase(u'×'), u'×');
  EXPECT_EQ(Effect::lowerCase(u'日'), u'日');
}

TEST_F(ListOrder, ManagesFewerEntriesThanAreFixed) {
  EXPECT_EQ(ordered({}, 2), u"");
  EXPECT_EQ(ordered({u"b"}, 2), u"b|");
}

TEST_F(ListOrder, KeepsTheItemsThemselves) {
  Refhost::ListData list(strings);
  const auto second = list.append(u"b", u"1");
  const auto first = list.append(u"a", u"2");
  Effect::orderByLabel(list, 0);
  EXPECT_EQ(list.at(0), first);
  EXPECT_EQ(list.at(1), second);
}

}  // namespace
