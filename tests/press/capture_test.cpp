#include "press/job/capture.h"
#include "press/job/sample.h"
#include "press/pictures/bitmap.h"
#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using Press::captureOverlay;
using Press::Effects;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class Capture : public testing::Test {
 protected:
  Capture() { write(folder / "job.pdf", Press::samplePdf()); }

  std::string refusal(const std::string& in) {
    try {
      captureOverlay(folder / in);
    } catch (const Press::Error& error) {
      return error.what();
    }
    return "captured";
  }

  const TestFolder folder;
};

unsigned byteAt(const std::string& bytes, std::size_t at) { return static_cast<unsigned char>(bytes.at(at)); }
unsigned numberAt(const std::string& bytes, std::size_t at) {
  return byteAt(bytes, at) | byteAt(bytes, at + 1) << 8 | byteAt(bytes, at + 2) << 16 | byteAt(bytes, at + 3) << 24;
}

}  // namespace

TEST(Bitmap, IsOfTwentyFourBitsFromTheBottomWithRowsFilledUp) {
  const std::string bytes = Press::bitmapFile({3,
                                               2,
                                               {0xFF112233, 0xFF445566, 0xFF778899,  //
                                                0xFFAABBCC, 0xFF000000, 0xFFFFFFFF}});
  ASSERT_EQ(bytes.size(), 54u + 2 * 12);
  EXPECT_EQ(bytes.substr(0, 2), "BM");
  EXPECT_EQ(numberAt(bytes, 2), bytes.size());
  EXPECT_EQ(numberAt(bytes, 10), 54u);
  EXPECT_EQ(numberAt(bytes, 18), 3u);
  EXPECT_EQ(numberAt(bytes, 22), 2u);
  EXPECT_EQ(byteAt(bytes, 28), 24u);
  EXPECT_EQ(bytes.substr(54, 3), "\xCC\xBB\xAA");
  EXPECT_EQ(bytes.substr(54 + 9, 3), std::string(3, '\0'));
  EXPECT_EQ(bytes.substr(54 + 12, 3), "\x33\x22\x11");
}

TEST_F(Capture, TakesTheFirstPageAlone) {
  const Press::Capture capture = captureOverlay(folder / "job.pdf");
  EXPECT_THAT(capture.notes, IsEmpty());
  write(folder / "a.opa", capture.pdf);
  EXPECT_EQ(Press::Job(folder / "a.opa").pageCount(), 1);
  EXPECT_EQ(difference(render(capture.pdf), render(Press::samplePdf())), 0);
  EXPECT_EQ(complaints(capture.pdf), "");
}

TEST_F(Capture, TakesTheChosenPage) {
  const Press::Capture capture = captureOverlay(folder / "job.pdf", {}, 2);
  EXPECT_EQ(difference(render(capture.pdf), render(Press::printPage(folder / "job.pdf", 2, {}))), 0);
  EXPECT_NE(difference(render(capture.pdf), render(Press::samplePdf())), 0);
}

TEST_F(Capture, AppliesTheEffects) {
  Effects effects;
  effects.negativeImage = effects.mirrorImage = true;
  write(folder / "form.pdf", TestJob{}.bytes());
  const std::string pdf = captureOverlay(folder / "form.pdf", effects).pdf;
  EXPECT_LE(difference(render(pdf), withEffects(render(TestJob{}.bytes()), effects)), 1);
}

TEST_F(Capture, DrawsASmallPictureOfThePage) {
  const std::string picture = captureOverlay(folder / "job.pdf").thumbnail.value();
  EXPECT_EQ(picture.substr(0, 2), "BM");
  EXPECT_NEAR(static_cast<double>(numberAt(picture, 18)), 181, 3);
  EXPECT_NEAR(static_cast<double>(numberAt(picture, 22)), 256, 3);
  const std::size_t row = (3 * numberAt(picture, 18) + 3) / 4 * 4;
  const std::size_t top = 54 + (numberAt(picture, 22) - 10) * row + 30;
  EXPECT_NEAR(byteAt(picture, top + 1), 0x5B, 2);  // the letter's green header
}

TEST_F(Capture, IsPrintedAsItIsCaptured) {
  write(folder / "form.pdf", TestJob{}.bytes());
  write(folder / "form.opa", captureOverlay(folder / "form.pdf").pdf);
  Effects effects;
  effects.overlays = {{folder / "form.opa", Press::PageRule()}};
  EXPECT_EQ(difference(render(printed(TestJob{.contents = {""}}.bytes(), effects)), render(TestJob{}.bytes())), 0);
}

TEST_F(Capture, ThatFailsSaysWhy) {
  write(folder / "text.pdf", "no PDF at all");
  EXPECT_THAT(refusal("text.pdf"), HasSubstr("text.pdf\" is not a PDF file"));
  EXPECT_THAT(refusal("missing.pdf"), HasSubstr("missing.pdf\" does not exist"));
}

TEST_F(Capture, HasNoPictureOfAPageThatCannotBeDrawn) {
  write(folder / "vast.pdf", TestJob{.boxes = "/MediaBox [0 0 9000000 9000000]"}.bytes());
  const Press::Capture capture = captureOverlay(folder / "vast.pdf");
  EXPECT_FALSE(capture.thumbnail);
  EXPECT_THAT(capture.notes, ElementsAre(HasSubstr("has no picture")));
}

TEST_F(Capture, TellsOfAFaceThatIsMissing) {
  Effects effects;
  effects.watermark.text = "Draft";
  effects.watermark.face = "No Such Face";
  EXPECT_THAT(captureOverlay(folder / "job.pdf", effects).notes, ElementsAre(HasSubstr("No Such Face")));
}
