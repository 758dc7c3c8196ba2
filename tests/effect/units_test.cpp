// The plug-in's independent units.
#include "effect/list_order.h"
#include "effect/screen_scale.h"
#include "effect/sentence.h"
#include "formats/letter_case.h"
#include "host/chrome/strings.h"
#include "host/widgets/list.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>

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

// Each capital of the basic plane with its small letter.
std::map<char16_t, char16_t> smallLetters() {
  std::ifstream file(SOURCE_FOLDER "/tests/effect/lower_case.txt");
  const auto letter = [](const std::string& digits) { return static_cast<char16_t>(std::stoi(digits, nullptr, 16)); };
  std::map<char16_t, char16_t> letters;
  for (std::string line; std::getline(file, line);)
    if (!line.starts_with('#')) letters.emplace(letter(line.substr(0, 4)), letter(line.substr(5)));
  return letters;
}

TEST(LowerCase, OfEachCapitalIsItsSmallLetterAndOfEverythingElseItself) {
  const auto letters = smallLetters();
  ASSERT_GT(letters.size(), 1100U);
  for (int unit = 0; unit <= 0xFFFF; ++unit) {
    const auto found = letters.find(static_cast<char16_t>(unit));
    const int small = found == letters.end() ? unit : found->second;
    EXPECT_EQ(Formats::lowerCase(static_cast<char16_t>(unit)), small) << std::hex << unit;
  }
}

TEST(LowerCase, IsKnownWhileCompiling) {
  static_assert(Formats::lowerCase(u'A') == u'a');
  static_assert(Formats::lowerCase(u'z') == u'z');
  static_assert(Formats::lowerCase(u'日') == u'日');
}

TEST_F(ListOrder, IgnoresCaseInEveryScriptThatHasCase) {
  // Vietnamese, Azerbaijani, Armenian, Georgian, polytonic Greek, Cyrillic.
  for (const auto& [capital, small] :
       {std::pair(u"Ơ", u"ơ"), std::pair(u"Ư", u"ư"), std::pair(u"Ə", u"ə"), std::pair(u"Ա", u"ա"),
        std::pair(u"Ა", u"ა"), std::pair(u"Ἀ", u"ἀ"), std::pair(u"Ꙁ", u"ꙁ")}) {
    const std::u16string first = small + std::u16string(u"a");
    const std::u16string second = capital + std::u16string(u"b");
    const std::u16string third = small + std::u16string(u"c");
    EXPECT_EQ(ordered({third.c_str(), second.c_str(), first.c_str()}, 0), first + u'|' + second + u'|' + third + u'|');
  }
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
