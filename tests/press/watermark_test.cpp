#include "press/error.h"
#include "press/job/effects.h"
#include "press/marks/place.h"
#include "press/marks/watermark.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

using Press::Across;
using Press::Box;
using Press::Down;
using Press::PageFrame;
using Press::Watermark;
using Press::watermarkFromProperties;

namespace {

using Properties = std::map<std::string, std::string>;

const Properties confidential{
    {"Watermark", "Watermark"},       {"WatermarkText", "Confidential"},    {"WatermarkTextFont", "DejaVu Sans"},
    {"WatermarkTextFontSize", "48"},  {"WatermarkTextStyle", "BoldItalic"}, {"WatermarkTextColour", "#00FF8001"},
    {"WatermarkTextAngle", "315"},    {"WatermarkTextWidth", "L"},          {"WatermarkTextHeight", "U"},
    {"WatermarkTextOutline", "True"}, {"WatermarkTextTransparency", "30"},  {"WatermarkTextScale", "True"},
    {"WatermarkLayering", "Overlay"}, {"WatermarkOccurance", "PerPage"},    {"FirstPageOnly", "True"}};

Properties with(const char* name, const char* value) {
  Properties changed = confidential;
  changed[name] = value;
  return changed;
}

std::string refusal(const char* name, const char* value) {
  try {
    watermarkFromProperties(with(name, value));
  } catch (const Press::Error& error) {
    return error.what();
  }
  return "taken";
}

}  // namespace

TEST(WatermarkProperties, AreReadAsTheTicketCarriesThem) {
  const Watermark mark = watermarkFromProperties(confidential);
  EXPECT_EQ(mark.text, "Confidential");
  EXPECT_EQ(mark.face, "DejaVu Sans");
  EXPECT_EQ(mark.size, 48);
  EXPECT_TRUE(mark.isBold);
  EXPECT_TRUE(mark.isItalic);
  EXPECT_EQ(mark.colour, 0xFF8001u);
  EXPECT_EQ(mark.angle, 315);
  EXPECT_EQ(mark.across, Across::left);
  EXPECT_EQ(mark.down, Down::upper);
  EXPECT_TRUE(mark.isOutlined);
  EXPECT_EQ(mark.transparency, 30);
  EXPECT_TRUE(mark.fitsPage);
  EXPECT_TRUE(mark.firstOnly);
  EXPECT_TRUE(mark.onEachPage);
  EXPECT_FALSE(mark.isUnderPage);
}

TEST(WatermarkProperties, WithoutTheFeatureThereIsNoMark) {
  EXPECT_EQ(watermarkFromProperties({}).text, "");
  EXPECT_EQ(watermarkFromProperties(with("Watermark", "None")).text, "");
  EXPECT_EQ(watermarkFromProperties(with("Watermark", "watermark")).text, "");
}

TEST(WatermarkProperties, LetterLMeansLeftAcrossAndLowerDown) {
  EXPECT_EQ(watermarkFromProperties(with("WatermarkTextWidth", "L")).across, Across::left);
  EXPECT_EQ(watermarkFromProperties(with("WatermarkTextHeight", "L")).down, Down::lower);
  EXPECT_EQ(watermarkFromProperties(with("WatermarkTextWidth", "C")).across, Across::centre);
  EXPECT_EQ(watermarkFromProperties(with("WatermarkTextHeight", "C")).down, Down::centre);
  EXPECT_EQ(watermarkFromProperties(with("WatermarkTextWidth", "R")).across, Across::right);
}

TEST(WatermarkProperties, StylesAreBoldItalicBothOrElseRegular) {
  const auto style = [](const char* name) {
    const Watermark mark = watermarkFromProperties(with("WatermarkTextStyle", name));
    return std::string(mark.isBold ? "b" : "") + (mark.isItalic ? "i" : "");
  };
  EXPECT_EQ(style("Bold"), "b");
  EXPECT_EQ(style("Italic"), "i");
  EXPECT_EQ(style("BoldItalic"), "bi");
  EXPECT_EQ(style("Regular"), "");
  EXPECT_EQ(style("bold"), "");
}

TEST(WatermarkProperties, AbsentAndEmptyValuesHaveTheirDefaults) {
  Watermark plain;
  plain.text = "Draft";
  EXPECT_EQ(watermarkFromProperties({{"Watermark", "Watermark"}, {"WatermarkText", "Draft"}}), plain);
  Properties empty = confidential;
  for (auto& [name, value] : empty) value.clear();
  empty["Watermark"] = "Watermark";
  empty["WatermarkText"] = "Draft";
  EXPECT_EQ(watermarkFromProperties(empty), plain);
}

TEST(WatermarkProperties, ValuesThatNoMarkCanHaveAreRefusedByName) {
  for (const char* size : {"0", "-5", "1e9", "nan", "abc", "12pt", "1001"})
    EXPECT_THAT(refusal("WatermarkTextFontSize", size),
                testing::StartsWith("The watermark's WatermarkTextFontSize is"));
  for (const char* colour : {"#12", "#FF0000", "#01FF0000", "#00GG0000", "00FF00000", "red"})
    EXPECT_THAT(refusal("WatermarkTextColour", colour), testing::HasSubstr("#00RRGGBB")) << colour;
  for (const char* transparency : {"-1", "101", "inf"})
    EXPECT_THAT(refusal("WatermarkTextTransparency", transparency), testing::HasSubstr("from 0 to 100 percent"));
  EXPECT_THAT(refusal("WatermarkTextAngle", "abc"), testing::HasSubstr("degrees"));
  for (const char* name : {"WatermarkTextOutline", "FirstPageOnly"})
    for (const char* flag : {"yes", "true", "1"})
      EXPECT_THAT(refusal(name, flag), testing::HasSubstr("is True or False")) << name << flag;
  EXPECT_THAT(refusal("WatermarkTextWidth", "U"), testing::HasSubstr("L, C or R"));
  EXPECT_THAT(refusal("WatermarkTextHeight", "R"), testing::HasSubstr("U, C or L"));
}

TEST(WatermarkProperties, AMarkThatIsOffIsNotLookedAt) {
  Properties broken = with("WatermarkTextFontSize", "abc");
  broken["Watermark"] = "None";
  EXPECT_EQ(watermarkFromProperties(broken), Watermark{});
}

TEST(WatermarkProperties, ARefusalIsKeptUntilSomethingIsPrinted) {
  const Press::Effects effects = Press::effectsFromProperties(with("WatermarkTextFontSize", "abc"));
  EXPECT_THAT(effects.refusal, testing::HasSubstr("WatermarkTextFontSize is \"abc\""));
}

// The mark's bounds after placing determine its position completely.

namespace {

constexpr Box bounds{10, -20, 110, 20};  // 100 wide, 40 high
constexpr PageFrame a4{{0, 0, 600, 800}, 0, 1};

Watermark at(Across across, Down down, double angle = 0) {
  Watermark mark;
  mark.across = across;
  mark.down = down;
  mark.angle = angle;
  return mark;
}

std::vector<double> cornersOf(const Box& box) { return {box.x0, box.y0, box.x1, box.y1}; }

void expectAt(const PageFrame& page, const Watermark& mark, const Box& expected) {
  const std::vector<double> corners = cornersOf(moved(bounds, placeMark(page, bounds, mark)));
  EXPECT_THAT(corners, testing::Pointwise(testing::DoubleNear(1e-9), cornersOf(expected)));
}

}  // namespace

TEST(PlaceOfAMark, IsTheMiddleOrAQuarterOfAnInchFromTheEdges) {
  expectAt(a4, at(Across::centre, Down::centre), {250, 380, 350, 420});
  expectAt(a4, at(Across::left, Down::upper), {18, 742, 118, 782});
  expectAt(a4, at(Across::right, Down::lower), {482, 18, 582, 58});
  expectAt(a4, at(Across::centre, Down::upper), {250, 742, 350, 782});
}

TEST(PlaceOfAMark, CountsTheTurnedMark) {
  expectAt(a4, at(Across::centre, Down::centre, 90), {280, 350, 320, 450});
  expectAt(a4, at(Across::left, Down::lower, 270), {18, 18, 58, 118});
}

TEST(PlaceOfAMark, TurnsClockwiseWithTheAngle) {
  const Press::Matrix up = placeMark(a4, bounds, at(Across::centre, Down::centre, 315));
  EXPECT_NEAR(up.a, std::sqrt(0.5), 1e-12);
  EXPECT_NEAR(up.b, std::sqrt(0.5), 1e-12);  // The text rises to the upper right.
  const Press::Matrix full = placeMark(a4, bounds, at(Across::centre, Down::centre, 360));
  EXPECT_EQ(full.a, 1);
  EXPECT_EQ(full.b, 0);
}

TEST(PlaceOfAMark, IsAsThePageIsSeen) {
  const Watermark mark = at(Across::left, Down::upper);
  expectAt({{0, 0, 600, 800}, 90, 1}, mark, {18, 18, 58, 118});  // The displayed left is the page's bottom.
  expectAt({{0, 0, 600, 800}, 180, 1}, mark, {482, 18, 582, 58});
  expectAt({{0, 0, 600, 800}, 270, 1}, mark, {542, 682, 582, 782});
  expectAt({{100, -50, 700, 750}, 0, 1}, mark, {118, 692, 218, 732});
}

TEST(PlaceOfAMark, KeepsItsSizeInPointsWhereUnitsAreLarger) {
  expectAt({{0, 0, 300, 400}, 0, 2}, at(Across::left, Down::upper), {9, 371, 59, 391});
}

TEST(PlaceOfAMark, ALargeMarkIsMadeToFit) {
  const PageFrame small{{0, 0, 80, 200}, 0, 1};  // The margin is a twentieth of 80: 4.
  expectAt(small, at(Across::centre, Down::centre), {4, 85.6, 76, 114.4});
  Watermark rigid = at(Across::centre, Down::centre);
  rigid.fitsPage = false;
  expectAt(small, rigid, {-10, 80, 90, 120});
}

TEST(PlaceOfAMark, MatricesUndoEachOther) {
  const Press::Matrix turn{0.3, 2, -1.5, 0.7, 12, -9};
  const Press::Matrix nothing = turn * inverse(turn);
  EXPECT_NEAR(nothing.a, 1, 1e-12);
  EXPECT_NEAR(nothing.b, 0, 1e-12);
  EXPECT_NEAR(nothing.c, 0, 1e-12);
  EXPECT_NEAR(nothing.d, 1, 1e-12);
  EXPECT_NEAR(nothing.e, 0, 1e-12);
  EXPECT_NEAR(nothing.f, 0, 1e-12);
}
