// The plug-in's independent units.
#include "effect/list_order.h"
#include "effect/screen_scale.h"
#include "effect/sentence.h"
#include "formats/letter_case.h"
#include "host/chrome/strings.h"
#include "host/widgets/list.h"

#include <gtest/gtest.h>

namespace {

TEST(ScreenScale, IsInHundredthsAndNeverBelowOne) {
  EXPECT_FLOAT_EQ(Effect::scaleOf(72), 1.0F);
  EXPECT_FLOAT_EQ(Effect::scaleOf(96), 1.0F);
  EXPECT_FLOAT_EQ(Effect::scaleOf(97), 1.01F);
  EXPECT_FLOAT_EQ(Effect::scaleOf(110), 1.15F) << "114.58 hundredths";
  EXPECT_FLOAT_EQ(Effect::scaleOf(120), 1.25F);
  EXPECT_FLOAT_EQ(Effect::scaleOf(144), 1.5F);
  EXPECT_FLOAT_EQ(Effect::scaleOf(192), 2.0F);
}

// The first and the last character of each length in UTF-8.
constexpr std::pair<std::string_view, std::u16string_view> boundaries[] = {{"\x7F", u"\u007F"},
                                                                           {"\xC2\x80", u"\u0080"},
                                                                           {"\xDF\xBF", u"\u07FF"},
                                                                           {"\xE0\xA0\x80", u"\u0800"},
                                                                           {"\xED\x9F\xBF", u"\uD7FF"},
                                                                           {"\xEE\x80\x80", u"\uE000"},
                                                                           {"\xEF\xBF\xBF", u"\uFFFF"},
                                                                           {"\xF0\x90\x80\x80", u"\U00010000"},
                                                                           {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"}};

TEST(Utf8, IsReadAndWrittenUpToTheLastCharacterOfEachLength) {
  for (const auto& [narrow, wide] : boundaries) {
    EXPECT_EQ(Formats::toUtf16(std::string(narrow) + "z"), std::u16string(wide) + u"z") << narrow;
    EXPECT_EQ(Formats::toValidUtf8(std::u16string(wide) + u"z"), std::string(narrow) + "z") << narrow;
  }
}

TEST(Utf8, ThatIsNoneIsReadAsReplacements) {
  constexpr std::pair<std::string_view, std::u16string_view> texts[] = {
      {"\xC1\xBFz", u"\uFFFD\uFFFDz"},
      {"\xE0\x9F\xBFz", u"\uFFFDz"},
      {"\xF0\x8F\xBF\xBFz", u"\uFFFDz"},
      {"\xF4\x90\x80\x80z", u"\uFFFDz"},
      {"\xF5\x80\x80\x80z", u"\uFFFD\uFFFD\uFFFD\uFFFDz"},
      {"\xBFz", u"\uFFFDz"},
      {"\xC3z", u"\uFFFDz"},
      {"\xC3\xC3\xA9", u"\uFFFDé"},
      {"\xE2\x82", u"\uFFFD\uFFFD"},
      {"\xF0\x9F\x98", u"\uFFFD\uFFFD\uFFFD"},
      {"\xF0\x9F\x98z\x80", u"\uFFFD\uFFFD\uFFFDz\uFFFD"}};
  for (const auto& [narrow, wide] : texts) EXPECT_EQ(Formats::toUtf16(narrow), wide);
}

TEST(Utf8, HasReplacementsForHalvesOfCharacters) {
  const std::pair<std::u16string, std::string> texts[] = {
      {{0xD800}, "\xEF\xBF\xBD"},
      {{0xDBFF, u'z'}, "\xEF\xBF\xBDz"},
      {{0xDBFF, 0xE000}, "\xEF\xBF\xBD\xEE\x80\x80"},
      {{0xDC00, u'z'}, "\xEF\xBF\xBDz"},
      {{0xDFFF, 0xDC00}, "\xEF\xBF\xBD\xEF\xBF\xBD"},
      {{0xD800, 0xD800, 0xDC00}, "\xEF\xBF\xBD\xF0\x90\x80\x80"},
      {{0xDC00, 0xDC00, 0xDFFF}, "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}};
  for (const auto& [wide, narrow] : texts) EXPECT_EQ(Formats::toValidUtf8(wide), narrow);
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
  EXPECT_EQ(Formats::lowerCase(u'×'), u'×');
  EXPECT_EQ(Formats::lowerCase(u'日'), u'日');
}

// The first and the last of each block, and what lies just outside.
TEST(LowerCase, OfEachCapitalIsItsSmallLetter) {
  const std::pair<char16_t, char16_t> letters[] = {
      {u'A', u'a'},     {u'Z', u'z'},     {0x00C0, 0x00E0}, {0x00D6, 0x00F6}, {0x00D8, 0x00F8}, {0x00DE, 0x00FE},
      {0x0100, 0x0101}, {0x0136, 0x0137}, {0x0139, 0x013A}, {0x0147, 0x0148}, {0x014A, 0x014B}, {0x0176, 0x0177},
      {0x0178, 0x00FF}, {0x0179, 0x017A}, {0x017D, 0x017E}, {0x01CD, 0x01CE}, {0x01DB, 0x01DC}, {0x01DE, 0x01DF},
      {0x01EE, 0x01EF}, {0x01F8, 0x01F9}, {0x021E, 0x021F}, {0x0222, 0x0223}, {0x0232, 0x0233}, {0x0246, 0x0247},
      {0x024E, 0x024F}, {0x0386, 0x03AC}, {0x0388, 0x03AD}, {0x0389, 0x03AE}, {0x038A, 0x03AF}, {0x038C, 0x03CC},
      {0x038E, 0x03CD}, {0x038F, 0x03CE}, {0x0391, 0x03B1}, {0x03A1, 0x03C1}, {0x03A3, 0x03C3}, {0x03AB, 0x03CB},
      {0x03D8, 0x03D9}, {0x03EE, 0x03EF}, {0x0400, 0x0450}, {0x040F, 0x045F}, {0x0410, 0x0430}, {0x042F, 0x044F},
      {0x0460, 0x0461}, {0x0480, 0x0481}, {0x048A, 0x048B}, {0x04BE, 0x04BF}, {0x04C0, 0x04CF}, {0x04C1, 0x04C2},
      {0x04CD, 0x04CE}, {0x04D0, 0x04D1}, {0x052E, 0x052F}, {0x1E00, 0x1E01}, {0x1E94, 0x1E95}, {0x1EA0, 0x1EA1},
      {0x1EFE, 0x1EFF}, {0xFF21, 0xFF41}, {0xFF3A, 0xFF5A}};
  for (const auto& [capital, small] : letters) {
    EXPECT_EQ(Formats::lowerCase(capital), small) << std::hex << static_cast<int>(capital);
    EXPECT_EQ(Formats::lowerCase(small), small) << std::hex << static_cast<int>(small);
  }
}

TEST(LowerCase, OfEverythingElseIsItself) {
  for (const char16_t unit :
       {u'@',      u'[',      u'`',      u'{',      u'\u00BF', u'\u00D7', u'\u00DF', u'\u00F7', u'\u0130',
        u'\u0138', u'\u0149', u'\u017F', u'\u0387', u'\u038B', u'\u038D', u'\u0390', u'\u03A2', u'\u0482',
        u'\u0489', u'\u1E96', u'\u1E9F', u'\u1F00', u'\uFF20', u'\uFF3B', u'日'})
    EXPECT_EQ(Formats::lowerCase(unit), unit) << std::hex << static_cast<int>(unit);
}

TEST_F(ListOrder, LowersAccentedGreekAndFullWidthCapitals) {
  EXPECT_EQ(ordered({u"Άβ", u"άα", u"Ωβ", u"Ώα", u"ώΒ", u"Ｂa", u"ａB", u"Ａa"}, 0), u"άα|Άβ|Ωβ|Ώα|ώΒ|Ａa|ａB|Ｂa|");
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
