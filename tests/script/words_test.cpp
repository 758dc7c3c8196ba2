#include "script/words.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using Script::isComment;
using Script::splitWords;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Words, BlanksSeparate) { EXPECT_THAT(splitWords("  set\tNAME   value "), ElementsAre("set", "NAME", "value")); }

TEST(Words, DoubleQuotesKeepTextWhole) {
  EXPECT_THAT(splitWords(R"(type box "two words")"), ElementsAre("type", "box", "two words"));
}

TEST(Words, SingleQuotesKeepBackslashesAndDoubleQuotes) {
  EXPECT_THAT(splitWords(R"('a\b"c')"), ElementsAre(R"(a\b"c)"));
}

TEST(Words, BackslashTakesTheNextCharacterAsItIs) {
  EXPECT_THAT(splitWords(R"(two\ words \" \' \\ \n)"), ElementsAre("two words", "\"", "'", "\\", "n"));
}

TEST(Words, BackslashInDoubleQuotesTakesTheNextCharacterAsItIs) {
  EXPECT_THAT(splitWords(R"("a\"b\\c\nd")"), ElementsAre(R"(a"b\cnd)"));
}

TEST(Words, QuotedAndPlainTextTogetherAreOneWord) {
  EXPECT_THAT(splitWords(R"(a"b c"'d e'f)"), ElementsAre("ab cd ef"));
}

TEST(Words, EmptyQuotesAreAnEmptyWord) {
  EXPECT_THAT(splitWords(R"(set NAME "" '')"), ElementsAre("set", "NAME", "", ""));
}

TEST(Words, HashInsideALineIsText) {
  EXPECT_THAT(splitWords("pick box #FF0000"), ElementsAre("pick", "box", "#FF0000"));
}

TEST(Words, BytesOfOtherScriptsStayTogether) {
  EXPECT_THAT(splitWords("set 名前 社外秘"), ElementsAre("set", "名前", "社外秘"));
}

TEST(Words, NothingIsNoWord) { EXPECT_THAT(splitWords(""), IsEmpty()); }

TEST(Words, UnbalancedQuotesAndALastBackslashAreRefused) {
  for (const char* line : {"type \"a", "type 'a", "type \"a'", "type \"a\\\"", "type a\\", "'"})
    EXPECT_THROW(splitWords(line), std::runtime_error) << line;
}

TEST(Words, BlankLinesAndLinesThatBeginWithAHashAreNoCommands) {
  for (const char* line : {"", " \t", "# note", "#"}) EXPECT_TRUE(isComment(line)) << line;
  for (const char* line : {"ok", " ok", "ok # yes"}) EXPECT_FALSE(isComment(line)) << line;
}

}  // namespace
