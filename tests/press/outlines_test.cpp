// A watermark's text as outlines. The faces are those of tools/install-packages.

#include "press/error.h"
#include "press/text/outlines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using Press::Outlines;
using Press::outlinesOf;
using Press::PathStep;
using Press::Watermark;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

Watermark text(const char* words, const char* face = "DejaVu Sans") {
  Watermark mark;
  mark.text = words;
  mark.face = face;
  return mark;
}

double width(const Outlines& outlines) { return outlines.bounds.x1 - outlines.bounds.x0; }
double height(const Outlines& outlines) { return outlines.bounds.y1 - outlines.bounds.y0; }

// The highest point of a text in its leftmost `points`.
double topOfLeft(const Outlines& outlines, double points) {
  double top = 0;
  for (const PathStep& step : outlines.parts.at(0).path)
    if (step.kind != PathStep::Kind::close && step.points[0].x < outlines.bounds.x0 + points)
      top = std::max(top, step.points[0].y);
  return top;
}

std::size_t contours(const Outlines& outlines) {
  std::size_t count = 0;
  for (const Press::OutlinePart& part : outlines.parts)
    count += static_cast<std::size_t>(std::count_if(
        part.path.begin(), part.path.end(), [](const PathStep& step) { return step.kind == PathStep::Kind::move; }));
  return count;
}

}  // namespace

TEST(OutlinesOfText, HaveTheLettersOwnShapes) {
  EXPECT_EQ(contours(outlinesOf(text("i"))), 2u);
  EXPECT_EQ(contours(outlinesOf(text("B"))), 3u);
  EXPECT_EQ(contours(outlinesOf(text("iB"))), 5u);
}

TEST(OutlinesOfText, AreOfTheSizeThatIsAsked) {
  Watermark mark = text("H");
  mark.size = 100;
  EXPECT_NEAR(height(outlinesOf(mark)), 72.9, 0.1);  // the height of capitals
  EXPECT_NEAR(outlinesOf(mark).bounds.y0, 0, 0.01);
  mark.size = 50;
  EXPECT_NEAR(height(outlinesOf(mark)), 36.45, 0.05);
}

TEST(OutlinesOfText, HaveBoundsThatCurvesDoNotLeave) {
  Watermark mark = text("O");
  mark.size = 100;
  const Outlines o = outlinesOf(mark);
  EXPECT_NEAR(o.bounds.y0, -1.4, 0.1);  // Round letters overshoot both lines slightly.
  EXPECT_NEAR(o.bounds.y1, 74.2, 0.1);
}

TEST(OutlinesOfText, AreNothingForTextThatShowsNothing) {
  EXPECT_TRUE(outlinesOf(text("")).empty());
  EXPECT_TRUE(outlinesOf(text("   ")).empty());
}

TEST(OutlinesOfText, AreOneLine) {
  EXPECT_EQ(width(outlinesOf(text("a\nb"))), width(outlinesOf(text("a b"))));
  EXPECT_EQ(width(outlinesOf(text("a\tb\r"))), width(outlinesOf(text("a b "))));
}

TEST(OutlinesOfText, FollowTheStyle) {
  Watermark mark = text("Draft");
  const double regular = width(outlinesOf(mark));
  mark.isBold = true;
  EXPECT_GT(width(outlinesOf(mark)), 1.05 * regular);
}

TEST(OutlinesOfText, LeanWhereTheFaceHasNoItalic) {
  Watermark mark = text("草", "Droid Sans Fallback");
  const double upright = width(outlinesOf(mark));
  mark.isItalic = true;
  EXPECT_GT(width(outlinesOf(mark)), 1.1 * upright);
}

TEST(OutlinesOfText, AreThickenedWhereTheFaceHasNoBold) {
  Watermark mark = text("草", "Droid Sans Fallback");
  EXPECT_EQ(outlinesOf(mark).parts.at(0).lineWidth, 0);
  mark.isBold = true;
  const Outlines bold = outlinesOf(mark);
  EXPECT_TRUE(bold.parts.at(0).isFilled);
  EXPECT_EQ(bold.parts.at(0).lineWidth, 2);
}

TEST(OutlinesOfText, AreLinesAloneWhenOnlyTheEdgesAreAsked) {
  Watermark mark = text("H");
  const Outlines filled = outlinesOf(mark);
  mark.isOutlined = true;
  const Outlines drawn = outlinesOf(mark);
  EXPECT_FALSE(drawn.parts.at(0).isFilled);
  EXPECT_EQ(drawn.parts.at(0).lineWidth, 1.5);
  EXPECT_EQ(width(drawn), width(filled) + 1.5);
}

TEST(OutlinesOfText, JoinLettersOfScriptsThatJoinThem) {
  EXPECT_LT(width(outlinesOf(text("ببب"))), 0.8 * width(outlinesOf(text("ب ب ب"))));
}

TEST(OutlinesOfText, PutAVowelWhereItIsReadNotWhereItIsWritten) {
  // Its bow rises above the consonant, and is drawn at its left.
  const Outlines consonant = outlinesOf(text("क")), withVowel = outlinesOf(text("कि"));
  EXPECT_GT(topOfLeft(withVowel, 20), topOfLeft(consonant, 20) + 5);
}

TEST(OutlinesOfText, StackMarksInsteadOfPlacingThemBeside) {
  EXPECT_NEAR(width(outlinesOf(text("ร่"))), width(outlinesOf(text("ร"))), 5);
}

TEST(OutlinesOfText, RunFromTheRightWhereTheScriptDoes) {
  // The full stop ends the sentence, at its left.
  const Outlines stop = outlinesOf(text("."));
  EXPECT_NEAR(topOfLeft(outlinesOf(text("שלום.")), width(stop)), stop.bounds.y1, 0.01);
  EXPECT_GT(topOfLeft(outlinesOf(text("Salam.")), width(stop)), stop.bounds.y1 + 10);
}

TEST(OutlinesOfText, KeepTheOrderOfDigitsInTextFromTheRight) {
  EXPECT_EQ(outlinesOf(text("א 17")).bounds.x0, outlinesOf(text("17")).bounds.x0);
  EXPECT_NE(outlinesOf(text("17")).bounds.x0, outlinesOf(text("71")).bounds.x0);
}

TEST(OutlinesOfText, TakeLettersThatTheFaceLacksFromOthers) {
  const Outlines mixed = outlinesOf(text("Draft 草稿 ร่าง"));
  EXPECT_THAT(mixed.notes, IsEmpty());
  EXPECT_GT(width(mixed), width(outlinesOf(text("Draft"))) + 3 * 72);
}

TEST(OutlinesOfText, DrawEmojiWithoutColour) {
  const Outlines face = outlinesOf(text("😀"));
  EXPECT_THAT(face.notes, IsEmpty());
  EXPECT_GT(contours(face), 3u);
}

TEST(OutlinesOfText, SayWhichFaceStandsInForOneThatIsMissing) {
  const Outlines drawn = outlinesOf(text("Draft", "No Such Face"));
  EXPECT_FALSE(drawn.empty());
  ASSERT_EQ(drawn.notes.size(), 1u);
  EXPECT_THAT(drawn.notes[0], HasSubstr("The face \"No Such Face\" is not installed; the watermark is printed in \""));
}

// The tests' packages bring faces of the same widths.
TEST(OutlinesOfText, SayNothingOfAFaceThatPrintsAlike) {
  for (const char* family : {"Arial", "Times New Roman", "Courier New"})
    EXPECT_THAT(outlinesOf(text("Draft", family)).notes, IsEmpty()) << family;
}

TEST(OutlinesOfText, TakeTheNamesOfFacesAsPeopleWriteThem) {
  EXPECT_THAT(outlinesOf(text("Draft", "dejavu sans")).notes, IsEmpty());
  EXPECT_THAT(outlinesOf(text("Draft", "VL ゴシック")).notes, IsEmpty());
}

TEST(OutlinesOfText, DrawABoxAndSayWhereNoFaceHasALetter) {
  const Outlines drawn = outlinesOf(text("a\U00012000b"));  // Cuneiform
  EXPECT_EQ(contours(drawn), 2u + 2 + 2);
  EXPECT_THAT(drawn.notes, ElementsAre(HasSubstr("No installed face has \U00012000 of the watermark's text")));
}

TEST(OutlinesOfText, StandBrokenText) {
  EXPECT_FALSE(outlinesOf(text("\xff\xfe\xC3(\xED\xA0\x80")).empty());
  EXPECT_NO_THROW(outlinesOf(text("\u200D\u200D\uFE0F\u0301")));
}

TEST(OutlinesOfText, RefuseTextWithoutEnd) {
  EXPECT_NO_THROW(outlinesOf(text(std::string(1000, 'x').c_str())));
  EXPECT_THROW(outlinesOf(text(std::string(1001, 'x').c_str())), Press::Error);
}
