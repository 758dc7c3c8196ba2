#include "host/documents/escaping.h"

#include <gtest/gtest.h>

using namespace Refhost;

namespace {

TEST(EscapedName, KeepsWhatXmlCanCarry) {
  EXPECT_EQ(escapedName(u"WM_65A1_C_F3_G"), "WM_65A1_C_F3_G");
  EXPECT_EQ(escapedName(u"_a-b.c9"), "_a-b.c9");
}

TEST(EscapedName, EscapesWhatANameCannotBeginWith) {
  EXPECT_EQ(escapedName(u"0"), "_x0030_");
  EXPECT_EQ(escapedName(u"10"), "_x0031_0");
  EXPECT_EQ(escapedName(u"-a"), "_x002D_a");
  EXPECT_EQ(escapedName(u".a"), "_x002E_a");
}

TEST(EscapedName, EscapesEveryOtherUnit) {
  EXPECT_EQ(escapedName(u"a b/\u00E9:"), "a_x0020_b_x002F__x00E9__x003A_");
  EXPECT_EQ(escapedName(u"\U0001F5A8"), "_xD83D__xDDA8_");
  EXPECT_EQ(escapedName(std::u16string(1, u'\0')), "_x0000_");
}

TEST(EscapedName, EscapesEveryUnderscoreBeforeAnX) {
  EXPECT_EQ(escapedName(u"_x0030_"), "_x005F_x0030_");
  EXPECT_EQ(escapedName(u"a_x"), "a_x005F_x");
  EXPECT_EQ(escapedName(u"_X_y"), "_X_y");
}

TEST(EscapedName, OfNothingIsAName) {
  EXPECT_EQ(escapedName(u""), "_x_");
  EXPECT_EQ(unescapedName(u"_x_"), u"");
  EXPECT_EQ(unescapedName(u"_x005F_x_"), u"_x_");
}

TEST(Unescaped, LeavesWhatIsNoEscape) {
  for (const std::u16string text : {u"_x", u"_x003_", u"_x00300", u"_x00g0_", u"_X0030_", u"x0030_", u"_x0030"})
    EXPECT_EQ(unescapedText(text), text);
  EXPECT_EQ(unescapedText(u"_x00e9__x00E9_"), u"\u00E9\u00E9");
}

TEST(EscapedText, EscapesWhatXmlForbidsAlone) {
  EXPECT_EQ(escapedText(u"\u0001 \t\r\n \uFFFE\uFFFF \uFFFD\u0085", false),
            u"_x0001_ \t\r\n _xFFFE__xFFFF_ \uFFFD\u0085");
  const std::u16string lone = {0xDC00, 0xD83D};
  EXPECT_EQ(escapedText(lone, false), u"_xDC00__xD83D_");
  EXPECT_EQ(escapedText(u"\U0001F5A8 <&>", false), u"\U0001F5A8 <&>");
  EXPECT_EQ(escapedText(u"a_x1", false), u"a_x005F_x1");
}

TEST(EscapedText, EscapesWhiteSpaceAtItsEdges) {
  EXPECT_EQ(escapedText(u" a b\n", true), u"_x0020_a b_x000A_");
  EXPECT_EQ(escapedText(u"\t ", true), u"_x0009__x0020_");
  EXPECT_EQ(escapedText(u"", true), u"");
}

TEST(PlainName, IsWhatXmlTakes) {
  for (const auto name : {u"a", u"_", u"psk-1.2", u"\u00E9t\u00E9", u"\u4E0B\u66F8"}) EXPECT_TRUE(isPlainName(name));
  for (const auto name : {u"", u"1", u"-a", u"a:b", u"a b", u"a<", u"\u00D7", u"a\uFFFE"})
    EXPECT_FALSE(isPlainName(name));
}

}  // namespace
