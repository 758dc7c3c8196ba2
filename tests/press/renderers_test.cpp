// Poppler, MuPDF and Ghostscript must show the same printed page.

#include "formats/text.h"
#include "press/pictures/loader.h"
#include "tests/press/rendering.h"
#include "tests/press/small_disk.h"
#include "tests/press/test_job.h"

#include <gtest/gtest.h>

#include <string>

using Press::Effects;

namespace {

constexpr int whitePaperX = 195, whitePaperY = 295;

void expectNegativeEverywhere(const TestJob& description, int tolerance) {
  const std::string job = description.bytes();
  const std::string negative = printed(job, {.negativeImage = true});
  for (const Renderer renderer : allRenderers) {
    SCOPED_TRACE(static_cast<int>(renderer));
    const Press::Picture before = render(job, renderer);
    const Press::Picture after = render(negative, renderer);
    EXPECT_LE(difference(after, negated(before)), tolerance);
    EXPECT_EQ(pixel(before, whitePaperX, whitePaperY), 0xFFFFFFu);
    EXPECT_EQ(pixel(after, whitePaperX, whitePaperY), 0x000000u);
  }
}

class EachPageEffect : public testing::TestWithParam<Press::PageEffect> {};

INSTANTIATE_TEST_SUITE_P(On, EachPageEffect, testing::ValuesIn(Press::pageEffects),
                         [](const auto& row) { return Formats::toUtf8(row.param.setting.property); });

}  // namespace

// What an effect does to a picture is in rendering.cpp.
TEST_P(EachPageEffect, LooksAsItsPictureInEveryRenderer) {
  const std::string inks = "0.2 0.4 0.6 rg 60 100 50 50 re f 0.3 0.2 0.1 0.4 k 110 60 50 50 re f\n";
  const std::string job = TestJob{.boxes = "/MediaBox [0 0 842 1191]", .contents = {marks + inks}}.bytes();
  Effects effects;
  effects.*GetParam().isOn = true;
  for (const Renderer renderer : allRenderers) {
    const Press::Picture before = render(job, renderer);
    const Press::Picture expected = withEffects(before, effects);
    ASSERT_GT(difference(before, expected), 100) << "tests/press/rendering.cpp does not have the effect";
    EXPECT_LE(difference(render(printed(job, effects), renderer), expected), 2) << static_cast<int>(renderer);
  }
}

TEST(Negative, IsRightOnRgbInEveryRenderer) {
  expectNegativeEverywhere(
      {.contents = {"1 0 0 rg 10 200 50 50 re f 0 1 0 rg 60 200 50 50 re f 0.2 0.4 0.6 rg 110 200 50 "
                    "50 re f 0 0 0 rg 10 100 50 50 re f 1 1 1 rg 60 100 50 50 re f"}},
      1);
}

TEST(Negative, IsRightOnGreyInEveryRenderer) {
  expectNegativeEverywhere({.contents = {"0 g 10 200 50 50 re f 0.25 g 60 200 50 50 re f 0.75 g 110 200 50 50 re f"}},
                           1);
}

TEST(Negative, IsRightOnCmykInEveryRenderer) {
  expectNegativeEverywhere(
      {.contents = {"1 0 0 0 k 10 200 50 50 re f 0 1 0 0 k 60 200 50 50 re f 0 0 1 0 k 110 200 50 50 "
                    "re f 0 0 0 1 k 10 100 50 50 re f 0.3 0.2 0.1 0.4 k 60 100 50 50 re f"}},
      2);
}

TEST(Negative, IsRightOnCmykPagesThatAreCmykGroups) {
  expectNegativeEverywhere({.contents = {"1 0 0 0 k 10 200 50 50 re f 0 0 0 1 k 60 200 50 50 re f"},
                            .page = "/Group << /S /Transparency /CS /DeviceCMYK >>"},
                           2);
}

TEST(Negative, IsRightOnImagesInEveryRenderer) {
  expectNegativeEverywhere(
      {.contents = {"q 100 0 0 100 20 100 cm /I Do Q"},
       .resources = "/XObject << /I 4 0 R >>",
       .objects = {streamObject("/Type /XObject /Subtype /Image /Width 2 /Height 2 "
                                "/BitsPerComponent 8 /ColorSpace /DeviceRGB /Filter /ASCIIHexDecode",
                                "FF0000 00FF00 102030 FFFFFF>")}},
      2);
}

TEST(Placement, IsTheSameInEveryRenderer) {
  const Effects effects{.mirrorImage = true, .rotate180 = true};
  for (const char* turn : {"0", "90", "180", "270"}) {
    const TestJob job{.boxes = std::string("/MediaBox [-20 5 210 290] /CropBox [10 25 160 280] /Rotate ") + turn};
    const std::string after = printed(job.bytes(), effects);
    for (const Renderer renderer : allRenderers)
      EXPECT_EQ(difference(render(after, renderer), withEffects(render(job.bytes(), renderer), effects)), 0)
          << turn << " in renderer " << static_cast<int>(renderer);
  }
}

TEST(Placement, OfACropBoxThatReachesOutIsTheSameInBothRenderersThatCutIt) {
  const Effects effects{.mirrorImage = true};
  const TestJob job{.boxes = "/MediaBox [0 0 200 300] /CropBox [10 -50 260 280]"};
  const std::string after = printed(job.bytes(), effects);
  for (const Renderer renderer : {Renderer::mupdf, Renderer::ghostscript}) {
    const Press::Picture before = render(job.bytes(), renderer);
    if (before.width == 190 && before.height == 280) {
      EXPECT_EQ(difference(render(after, renderer), withEffects(before, effects)), 0) << static_cast<int>(renderer);
    } else {
      ADD_FAILURE() << before.width << " x " << before.height << " in " << static_cast<int>(renderer);
    }
  }
}

TEST(Isolation, HoldsForContentThatLeavesItsStateOpen) {
  const Effects effects{.mirrorImage = true, .negativeImage = true};
  const std::string job = TestJob{.contents = {"q q 0.5 0 0 1 30 20 cm " + marks}}.bytes();
  for (const Renderer renderer : allRenderers)
    EXPECT_LE(difference(render(printed(job, effects), renderer), withEffects(render(job, renderer), effects)), 1)
        << "renderer " << static_cast<int>(renderer);
}

// On an untouched page, MuPDF and most readers ignore a Q without its q; Ghostscript restores the page's initial state,
// and Poppler drops the rest of the page. In a form the first two ignore it.
TEST(Isolation, HoldsForContentThatClosesItsStateTooOften) {
  const Effects effects{.mirrorImage = true, .negativeImage = true};
  for (const char* start : {"1 0 1 rg Q 60 30 30 200 re f ", "0.5 0 0 1 30 20 cm Q Q "}) {
    const std::string job = TestJob{.contents = {start + marks}}.bytes();
    const Press::Picture meant = withEffects(render(job, Renderer::mupdf), effects);
    for (const Renderer renderer : {Renderer::mupdf, Renderer::ghostscript})
      EXPECT_LE(difference(render(printed(job, effects), renderer), meant), 1)
          << start << " in renderer " << static_cast<int>(renderer);
    EXPECT_LE(difference(render(printed(job, effects)), withEffects(render(job), effects)), 1) << start;
  }
}

TEST(Pictures, AreAsLargeAsTheResolutionAsks) {
  const Press::Picture picture = Press::drawPage(TestJob{}.bytes(), 1, 144);
  EXPECT_EQ(picture.width, 400);
  EXPECT_EQ(picture.height, 600);
  EXPECT_EQ(picture.argb.size(), 400u * 600u);
  EXPECT_EQ(picture.argb.front(), 0xFFFFFFFFu);
}

TEST(Pictures, AreSavedAsPng) {
  const TestFolder folder;
  Press::drawPageToPng(TestJob{}.bytes(), 1, 72, folder / "page.png");
  EXPECT_EQ(read(folder / "page.png").substr(0, 4), "\x89PNG");
}

TEST(Pictures, ThatDoNotFitOnTheDiskAreAnErrorAndNoLineOfALibrary) {
  const TestFolder folder;
  write(folder / "page.png", "old");
  const std::string job = TestJob{}.bytes();
  testing::internal::CaptureStderr();
  {
    const SmallDisk small(16);
    EXPECT_THROW(Press::drawPageToPng(job, 1, 72, folder / "page.png"), Press::Error);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(read(folder / "page.png"), "old");
}

TEST(Pictures, SayWhatCannotBeDrawn) {
  EXPECT_THROW(Press::drawPage(TestJob{}.bytes(), 2, 72), Press::Error);
  EXPECT_THROW(Press::drawPage("not a PDF", 1, 72), Press::Error);
  EXPECT_THROW(Press::drawPage(TestJob{}.bytes(), 1, 1e6), Press::Error);
  EXPECT_THROW(Press::drawPage(TestJob{}.bytes(), 1, 0), Press::Error);
  EXPECT_THROW(Press::drawPageToPng(TestJob{}.bytes(), 1, 72, "/no/such/folder/page.png"), Press::Error);
}

TEST(Pictures, DoNotChatterOnTheErrorOutput) {
  testing::internal::CaptureStderr();
  EXPECT_THROW(Press::drawPage("%PDF-1.7 broken", 1, 72), Press::Error);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
