#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "press/bitmap.h"
#include "press/capture.h"
#include "press/sample.h"
#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

using Press::captureOverlay;
using Press::Effects;
using Press::Picture;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class Capture : public testing::Test {
 protected:
  Capture() { write(folder / "job.pdf", Press::samplePdf()); }

  std::string refusal(const std::string& in, const std::string& destination) {
    try {
      captureOverlay(folder / in, folder / destination);
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
  EXPECT_THAT(captureOverlay(folder / "job.pdf", folder / "01234.opa"), IsEmpty());
  EXPECT_EQ(Press::Job(folder / "01234.opa").pageCount(), 1);
  EXPECT_EQ(difference(render(read(folder / "01234.opa")), render(Press::samplePdf())), 0);
  EXPECT_EQ(complaints(read(folder / "01234.opa")), "");
  EXPECT_THAT(folder.names(), ElementsAre("01234.bmp", "01234.opa", "job.pdf"));
}

TEST_F(Capture, AppliesTheEffects) {
  Effects effects;
  effects.negativeImage = effects.mirrorImage = true;
  write(folder / "form.pdf", TestJob{}.bytes());
  captureOverlay(folder / "form.pdf", folder / "a.opa", effects);
  EXPECT_LE(difference(render(read(folder / "a.opa")), withEffects(render(TestJob{}.bytes()), effects)), 1);
}

TEST_F(Capture, DrawsASmallPictureOfThePage) {
  captureOverlay(folder / "job.pdf", folder / "a.opa");
  const std::string picture = read(folder / "a.bmp");
  EXPECT_NEAR(static_cast<double>(numberAt(picture, 18)), 181, 3);
  EXPECT_NEAR(static_cast<double>(numberAt(picture, 22)), 256, 3);
  const std::size_t row = (3 * numberAt(picture, 18) + 3) / 4 * 4;
  const std::size_t top = 54 + (numberAt(picture, 22) - 10) * row + 30;
  EXPECT_NEAR(byteAt(picture, top + 1), 0x5B, 2);  // the letter's green head
}

TEST_F(Capture, IsPrintedAsItIsCaptured) {
  write(folder / "form.pdf", TestJob{}.bytes());
  captureOverlay(folder / "form.pdf", folder / "form.opa");
  Effects effects;
  effects.overlays = {{folder / "form.opa", Press::PageRule()}};
  EXPECT_EQ(difference(render(printed(TestJob{.contents = {""}}.bytes(), effects)), render(TestJob{}.bytes())), 0);
}

TEST_F(Capture, ReplacesAnEarlierOne) {
  write(folder / "a.opa", "old");
  write(folder / "a.bmp", "old");
  captureOverlay(folder / "job.pdf", folder / "a.opa");
  EXPECT_EQ(read(folder / "a.opa").substr(0, 5), "%PDF-");
  EXPECT_EQ(read(folder / "a.bmp").substr(0, 2), "BM");
}

TEST_F(Capture, LeavesEverythingAsItWasWhenItFails) {
  write(folder / "a.opa", "old");
  write(folder / "a.bmp", "old");
  write(folder / "text.pdf", "no PDF at all");
  EXPECT_THAT(refusal("text.pdf", "a.opa"), HasSubstr("text.pdf\" is not a PDF file"));
  EXPECT_THAT(refusal("missing.pdf", "a.opa"), HasSubstr("missing.pdf\" does not exist"));
  EXPECT_THAT(refusal("job.pdf", "job.pdf"), HasSubstr("is the job itself"));
  EXPECT_THAT(refusal("job.pdf", "nowhere/a.opa"), HasSubstr("nowhere/a.opa\" cannot be written"));
  std::filesystem::remove(folder / "a.bmp");
  std::filesystem::create_directory(folder / "a.bmp");
  EXPECT_THAT(refusal("job.pdf", "a.opa"), HasSubstr("cannot be written"));
  EXPECT_EQ(read(folder / "a.opa"), "old");
  EXPECT_THAT(folder.names(), ElementsAre("a.bmp", "a.opa", "job.pdf", "text.pdf"));
}

TEST_F(Capture, HasNoPictureOfAPageThatCannotBeDrawn) {
  write(folder / "vast.pdf", TestJob{.boxes = "/MediaBox [0 0 9000000 9000000]"}.bytes());
  write(folder / "a.bmp", "of another overlay");
  EXPECT_THAT(captureOverlay(folder / "vast.pdf", folder / "a.opa"), ElementsAre(HasSubstr("has no picture")));
  EXPECT_THAT(folder.names(), ElementsAre("a.opa", "job.pdf", "vast.pdf"));
}

TEST_F(Capture, TellsOfAFaceThatIsMissing) {
  Effects effects;
  effects.watermark.text = "Draft";
  effects.watermark.face = "No Such Face";
  EXPECT_THAT(captureOverlay(folder / "job.pdf", folder / "a.opa", effects), ElementsAre(HasSubstr("No Such Face")));
}
