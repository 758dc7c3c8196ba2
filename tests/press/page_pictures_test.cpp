// Prints awkward pages and looks at them: the picture of a printed page has to be the picture of the untouched page
// with the effect applied to its pixels.

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

using Press::Effects;

namespace {

struct AwkwardPage {
  const char* name;
  TestJob job;
  Renderer renderer = Renderer::poppler;  ///< One that shows the untouched page as it is meant.
  int tolerance = 0;
};

void PrintTo(const AwkwardPage& page, std::ostream* out) { *out << page.name; }

const std::string gradient = "/Pattern << /P << /PatternType 2 /Shading << /ShadingType 2 /ColorSpace /DeviceRGB "
                             "/Coords [0 0 200 300] /Function << /FunctionType 2 /Domain [0 1] /C0 [1 0 0] "
                             "/C1 [0 1 1] /N 1 >> /Extend [true true] >> >> >>";

std::vector<AwkwardPage> awkwardPages() {
  const std::string box = "/MediaBox [0 0 200 300] ";
  return {
      {"Plain", {}},
      {"Turned90", {.boxes = box + "/Rotate 90"}},
      {"Turned180", {.boxes = box + "/Rotate 180"}},
      {"Turned270", {.boxes = box + "/Rotate 270"}},
      {"TurnedMinus90", {.boxes = box + "/Rotate -90"}},
      {"Turned450", {.boxes = box + "/Rotate 450"}},
      {"TurnedMinus450", {.boxes = box + "/Rotate -450"}},
      {"TurnInherited", {.parent = "/Rotate 90"}},
      {"Cropped", {.boxes = box + "/CropBox [10 5 160 280]"}},
      {"CroppedAndTurned90", {.boxes = box + "/CropBox [10 5 160 280] /Rotate 90"}},
      {"CropReachesOut", {.boxes = box + "/CropBox [10 -50 260 280]"}, Renderer::mupdf},
      {"CropReachesOutAndTurned270", {.boxes = box + "/CropBox [10 -50 260 280] /Rotate 270"}, Renderer::mupdf},
      {"OriginElsewhere", {.boxes = "/MediaBox [-20 5 210 290]"}},
      {"OriginElsewhereAndTurned90", {.boxes = "/MediaBox [-20 5 210 290] /Rotate 90"}},
      {"CornersSwapped", {.boxes = "/MediaBox [200 300 0 0] /CropBox [160 280 10 5]"}},
      {"BoxesInherited", {.boxes = "", .parent = "/MediaBox [0 0 200 300] /CropBox [10 5 160 280]"}},
      {"BoxIndirect", {.boxes = "/MediaBox 4 0 R", .objects = {"[0 0 5 0 R 300]", "200"}}},
      {"NoBoxes", {.boxes = ""}},
      {"UserUnit", {.boxes = box + "/UserUnit 2"}, Renderer::mupdf},
      {"ResourcesInherited",
       {.contents = {"/S gs " + marks},
        .parent = "/Resources << /ExtGState << /S << /ca 0.5 >> >> >>",
        .hasResources = false}},
      {"ResourcesNowhere", {.hasResources = false}},
      {"StateLeftOpen", {.contents = {"q 0.5 0 0 1 30 20 cm " + marks}}},
      {"StateLeftOpenTwice", {.contents = {"q q 0.5 0 0 1 30 20 cm 0 0 190 230 re W n " + marks}}},
      {"StateClosedTooOften", {.contents = {"q Q Q Q " + marks}}, Renderer::mupdf},
      {"StateClosedTooOftenWithColour", {.contents = {"1 0 1 rg Q 60 30 30 200 re f Q " + marks}}, Renderer::mupdf},
      {"StateClosedTooOftenWithScale", {.contents = {"0.5 0 0 1 30 20 cm Q " + marks}}, Renderer::mupdf},
      {"StateClosedTooOftenInPieces", {.contents = {"1 0 1 rg", "Q 60 30 30 200 re f q", "Q", marks}}, Renderer::mupdf},
      {"StateClosedThenOpened", {.contents = {"Q 0.5 0 0 1 30 20 cm q " + marks}}, Renderer::mupdf},
      {"TextLeftOpen", {.contents = {marks + "BT"}}},
      {"MarkedContentLeftOpen", {.contents = {"/Artifact BMC " + marks}}},
      {"StringLeftOpen", {.contents = {marks + "(text"}}},
      {"ArrayLeftOpen", {.contents = {marks + "[1 2"}}},
      {"PathLeftOpen", {.contents = {marks + "10 10 m 190 10 l 190 290 l 10 290 l h"}}},
      {"ClipLeftOpen", {.contents = {"0 100 200 200 re W n " + marks + "0 0 20 20 re W"}}},
      {"CommentLeftOpen", {.contents = {marks + "% the end"}}},
      {"OperandsLeftOver", {.contents = {marks + "1 2 3"}}},
      {"InPieces", {.contents = {"q 0.5 0 0 1 30", "20 cm 1 0 0 r", "g", marks, "Q"}}, Renderer::mupdf},
      {"CutInsideAWord",
       {.contents = {"1 0 0 r", "g 20 250 100 20 re f 0 0 1 rg 150 10 30 60 r", "e f\n" + marks}},
       Renderer::mupdf},
      {"PieceMissing",
       {.contents = {}, .page = "/Contents [null 99 0 R 4 0 R 5 0 R]", .objects = {streamObject("", marks), "42"}},
       Renderer::mupdf},
      {"KeysOfAFormOnTheContent",
       {.contents = {},
        .page = "/Contents 4 0 R",
        .objects = {streamObject("/Matrix [2 0 0 2 9 9] /OC << /Type /OCG >> /Group << /S /Transparency /K true >>",
                                 "q " + marks)}}},
      {"InlineImage",
       {.contents = {marks + "q 40 0 0 40 60 60 cm BI /W 2 /H 2 /CS /G /BPC 8 ID \x10\x80\xC0\xF0 EI Q"}},
       Renderer::mupdf},
      {"InlineImageThenStateClosed",
       {.contents = {"1 0 1 rg q 40 0 0 40 60 60 cm BI /W 2 /H 2 /CS /G /BPC 8 ID \x10 Q\x80 EI Q Q " + marks}},
       Renderer::mupdf},
      {"Gradient", {.contents = {"/Pattern cs /P scn 10 20 150 250 re f"}, .resources = gradient}, Renderer::mupdf, 4},
      {"GradientInPieces",
       {.contents = {"/Pattern cs", "/P scn 10 20 150 250 re f"}, .resources = gradient},
       Renderer::mupdf,
       4},
      {"GradientTurned90",
       {.boxes = box + "/Rotate 90", .contents = {"/Pattern cs /P scn 10 20 150 250 re f"}, .resources = gradient},
       Renderer::mupdf,
       4},
      {"Tiles",
       {.contents = {"/Pattern cs /P scn 13 20 150 250 re f"},
        .resources = "/Pattern << /P 4 0 R >>",
        .objects = {streamObject("/PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 20 20] /XStep 20 /YStep 20 "
                                 "/Resources << >>",
                                 "1 0 0 rg 0 0 10 5 re f 0 0 1 rg 5 10 4 10 re f")}},
       Renderer::mupdf,
       8},
      {"FormWithoutResources",
       {.contents = {"/X Do"},
        .resources = "/XObject << /X 4 0 R >> /ExtGState << /S << /ca 0.5 >> >>",
        .objects = {streamObject("/Type /XObject /Subtype /Form /BBox [0 0 200 300]", "/S gs " + marks)}}},
      {"GroupInCmyk",
       {.contents = {marks}, .page = "/Group << /S /Transparency /CS /DeviceCMYK /K true >>"},
       Renderer::poppler,
       1},
      {"BlendedWithPaper",
       {.contents = {marks + "/S gs 1 1 0 rg 0 0 150 200 re f"},
        .resources = "/ExtGState << /S << /BM /Multiply /ca 0.8 >> >>"},
       Renderer::poppler,
       1},
      {"NameTaken",
       {.contents = {"/KilnNegative gs " + marks}, .resources = "/ExtGState << /KilnNegative << /ca 0.5 >> >>"},
       Renderer::poppler,
       1},
  };
}

class AwkwardPages : public testing::TestWithParam<AwkwardPage> {
 protected:
  void expectAsOnThePicture(const Effects& effects) {
    const AwkwardPage& page = GetParam();
    const std::string job = page.job.bytes();
    const Press::Picture before = render(job, page.renderer);
    ASSERT_TRUE(isTelling(before));
    const std::string after = printed(job, effects);
    EXPECT_LE(difference(render(after, page.renderer), withEffects(before, effects)), page.tolerance);
    EXPECT_EQ(complaints(after), "");
  }
};

INSTANTIATE_TEST_SUITE_P(All, AwkwardPages, testing::ValuesIn(awkwardPages()),
                         [](const auto& page) { return std::string(page.param.name); });

TEST_P(AwkwardPages, AreMirroredAsSeen) { expectAsOnThePicture({.mirrorImage = true}); }
TEST_P(AwkwardPages, AreTurnedAsSeen) { expectAsOnThePicture({.rotate180 = true}); }
TEST_P(AwkwardPages, AreNegatedAsSeen) { expectAsOnThePicture({.negativeImage = true}); }
TEST_P(AwkwardPages, TakeAllEffectsTogether) {
  expectAsOnThePicture({.mirrorImage = true, .negativeImage = true, .rotate180 = true});
}

TEST_P(AwkwardPages, LookTheSameInThePreview) {
  const AwkwardPage& page = GetParam();
  const TestFolder folder;
  write(folder / "in.pdf", page.job.bytes());
  const Effects effects{.mirrorImage = true, .negativeImage = true};
  const std::string previewed = Press::printPage(folder / "in.pdf", 1, effects);
  const std::string whole = printed(page.job.bytes(), effects);
  EXPECT_EQ(difference(render(previewed, page.renderer), render(whole, page.renderer)), 0);
  EXPECT_EQ(complaints(previewed), "");
}

/// How far the first page of a job with these boxes is turned by the effect for A3 and Ledger.
bool turnsForA3Ledger(const std::string& boxes) {
  const std::string job = TestJob{.boxes = boxes}.bytes();
  const Press::Picture before = render(job, Renderer::mupdf);
  const Press::Picture after = render(printed(job, {.rotate180ForA3Ledger = true}), Renderer::mupdf);
  EXPECT_TRUE(difference(after, before) == 0 || difference(after, turnedHalf(before)) == 0);
  return difference(after, turnedHalf(before)) == 0;
}

}  // namespace

TEST(A3Ledger, PagesOfThoseSizesAreTurned) {
  EXPECT_TRUE(turnsForA3Ledger("/MediaBox [0 0 842 1191]"));
  EXPECT_TRUE(turnsForA3Ledger("/MediaBox [0 0 1191 842]"));
  EXPECT_TRUE(turnsForA3Ledger("/MediaBox [0 0 792 1224]"));
  EXPECT_TRUE(turnsForA3Ledger("/MediaBox [0 0 1224 792]"));
  EXPECT_TRUE(turnsForA3Ledger("/MediaBox [0 0 1224 792] /Rotate 90"));
}

TEST(A3Ledger, ThePartThatIsSeenCounts) {
  EXPECT_TRUE(turnsForA3Ledger("/MediaBox [-10 -10 1300 1300] /CropBox [0 0 842 1191]"));
  EXPECT_FALSE(turnsForA3Ledger("/MediaBox [0 0 842 1191] /CropBox [0 0 595 842]"));
}

TEST(A3Ledger, UnitsOfThePageCount) {
  EXPECT_TRUE(turnsForA3Ledger("/MediaBox [0 0 421 596] /UserUnit 2"));
  EXPECT_FALSE(turnsForA3Ledger("/MediaBox [0 0 842 1191] /UserUnit 2"));
}

TEST(A3Ledger, AMillimetreOffIsStillThatSize) {
  EXPECT_TRUE(turnsForA3Ledger("/MediaBox [0 0 845 1188]"));
  EXPECT_FALSE(turnsForA3Ledger("/MediaBox [0 0 842 1200]"));
  EXPECT_FALSE(turnsForA3Ledger("/MediaBox [0 0 842 1224]"));
}

TEST(A3Ledger, OtherSizesStayAsTheyLie) { EXPECT_FALSE(turnsForA3Ledger("/MediaBox [0 0 595 842]")); }

TEST(A3Ledger, APageThatBothEffectsTurnIsTurnedOnce) {
  const std::string job = TestJob{.boxes = "/MediaBox [0 0 842 1191]"}.bytes();
  const std::string both = printed(job, {.rotate180 = true, .rotate180ForA3Ledger = true});
  EXPECT_EQ(difference(render(both), turnedHalf(render(job))), 0);
}

TEST(TextPages, LookRightWithEveryEffect) {
  const std::string job = TestJob{.contents = {"BT /F 24 Tf 20 200 Td (Text) Tj ET"},
                                  .resources = "/Font << /F << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >>"}
                              .bytes();
  const Effects effects{.mirrorImage = true, .negativeImage = true, .rotate180 = true};
  // Glyphs are smoothed by rows, so their edges differ upside down.
  EXPECT_LT(
      difference(render(printed(job, effects), Renderer::mupdf), withEffects(render(job, Renderer::mupdf), effects)),
      100);
}
