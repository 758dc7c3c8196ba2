// Prints awkward pages and compares pictures: the picture of a printed page must be the picture of the untouched page
// with the effect applied to its pixels.

#include "tests/press/awkward_pages.h"
#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

#include <gtest/gtest.h>

#include <string>

using Press::Effects;

namespace {

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

// Whether the effect for A3 and Ledger rotates the first page of a job with these boxes.
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
  // Glyphs are anti-aliased by rows, so their edges differ upside down.
  EXPECT_LT(
      difference(render(printed(job, effects), Renderer::mupdf), withEffects(render(job, Renderer::mupdf), effects)),
      100);
}
