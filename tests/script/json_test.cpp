#include "script/json.h"

#include <gtest/gtest.h>

namespace {

using Script::Json;
using Script::text;
using Script::toLine;

TEST(AnswerLine, MembersKeepTheirOrder) {
  EXPECT_EQ(toLine({{"ok", true}, {"b", 1}, {"a", nullptr}, {"list", {1, 2.5, "x"}}, {"none", Json::array()}}),
            R"({"ok":true,"b":1,"a":null,"list":[1,2.5,"x"],"none":[]})");
}

TEST(AnswerLine, ControlCharactersAreEscapedSoThatALineStaysOne) {
  EXPECT_EQ(toLine(text(u"\"\\\n\r\t\b\f\u0001\u001F\u007F")), "\"\\\"\\\\\\n\\r\\t\\b\\f\\u0001\\u001f\x7F\"");
}

TEST(AnswerLine, TextIsUtf8) { EXPECT_EQ(toLine(text(u"社外秘 \U0001F5A8 é")), "\"社外秘 \U0001F5A8 é\""); }

TEST(AnswerLine, UnpairedSurrogatesAreEscapes) {
  EXPECT_EQ(toLine(text(std::u16string{u'a', 0xD83D, u'b'})), R"("a\ud83db")");
  EXPECT_EQ(toLine(text(std::u16string{0xDE00, 0xD83D})), R"("\ude00\ud83d")");
}

TEST(AnswerLine, MemberNamesAreEscapedToo) { EXPECT_EQ(toLine({{"a\"b", 1}}), R"({"a\"b":1})"); }

TEST(AnswerLine, BytesThatAreNoTextBecomeTheReplacementCharacter) { EXPECT_EQ(toLine("a\xFFz"), "\"a\uFFFDz\""); }

TEST(AnswerLine, ReadsBackAsItWasWritten) {
  const Json value = {{"name", "\u0002 \" é"}, {"nested", {{"list", {true, false, nullptr, -7}}}}};
  EXPECT_EQ(Json::parse(toLine(value)), value);
}

}  // namespace
