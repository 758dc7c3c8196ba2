// Pictures that become overlays.
#include "press/error.h"
#include "press/job/capture.h"
#include "press/job/form_file.h"
#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

#include <png.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

using testing::HasSubstr;

namespace {

constexpr unsigned red = 0xFF0000, green = 0x00FF00, blue = 0x0000FF, white = 0xFFFFFF;

// A PNG of these pixels, 0xAARRGGBB, in rows of `width`.
std::string png(int width, const std::vector<std::uint32_t>& pixels, bool hasOpacity = true) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(width);
  image.height = static_cast<png_uint_32>(pixels.size()) / image.width;
  image.format = hasOpacity ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
  std::string samples;
  for (const std::uint32_t pixel : pixels) {
    for (const int shift : {16, 8, 0}) samples += static_cast<char>(pixel >> shift & 0xFF);
    if (hasOpacity) samples += static_cast<char>(pixel >> 24);
  }
  std::string bytes(4096, '\0');
  png_alloc_size_t size = bytes.size();
  EXPECT_NE(png_image_write_to_memory(&image, bytes.data(), &size, 0, samples.data(), 0, nullptr), 0);
  bytes.resize(size);
  return bytes;
}

// A PNG with a chunk before its samples.
std::string withResolution(std::string bytes, int perMetre) {
  std::string chunk("\0\0\0\x09pHYs", 8);
  for (int side = 0; side < 2; ++side)
    for (const int shift : {24, 16, 8, 0}) chunk += static_cast<char>(perMetre >> shift & 0xFF);
  chunk += '\1';
  chunk += std::string(4, '\0');  // ignored where the chunk is not critical
  return bytes.insert(bytes.find("IDAT") - 4, chunk);
}

std::string fromHex(std::string_view digits) {
  std::string bytes;
  for (std::size_t at = 0; at < digits.size(); at += 2)
    bytes += static_cast<char>(std::stoi(std::string(digits.substr(at, 2)), nullptr, 16));
  return bytes;
}

// 32 by 16 pixels at 72 to the inch: the left half red, the right one blue.
const std::string redAndBlue = fromHex(
    "ffd8ffe000104a46494600010101004800480000ffdb0043000d090a0b0a080d0b0a0b0e0e0d0f13201513121213271c1e17202e2931"
    "302e292d2c333a4a3e333646372c2d405741464c4e525352323e5a615a50604a51524fffdb0043010e0e0e131113261515264f352d35"
    "4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4f4fffc00011"
    "080010002003011100021101031101ffc400160001010100000000000000000000000000000506ffc400141001000000000000000000"
    "00000000000000ffc400160101010100000000000000000000000000000705ffc40014110100000000000000000000000000000000ff"
    "da000c03010002110311003f00cfb19490109624a805d475550109624a807fffd9");

// 8 by 8 pixels of cyan ink.
const std::string cyan = fromHex(
    "ffd8ffee000e41646f626500640000000002ffdb004300100b0c0e0c0a100e0d0e1211101318281a181616183123251d283a333d3c39"
    "33383740485c4e404457453738506d51575f626768673e4d71797064785c656763ffdb0043011112121815182f1a1a2f634238426363"
    "636363636363636363636363636363636363636363636363636363636363636363636363636363636363636363636363ffc000140800"
    "08000804012200021101031101042200ffc400160001010100000000000000000000000000000507ffc4001410010000000000000000"
    "0000000000000000ffc4001501010100000000000000000000000000000506ffc40014110100000000000000000000000000000000ff"
    "da000e040100021103110400003f008a00b5e34001ffd9");

// The JPEG with an EXIF segment that has nothing but the orientation.
std::string oriented(std::string bytes, char orientation, bool isLittleEndian) {
  using namespace std::string_literals;
  const std::string little = "II*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0"s + orientation + "\0\0\0"s;
  const std::string big = "MM\0*\0\0\0\x08\0\1\1\x12\0\3\0\0\0\1\0"s + orientation + "\0\0"s;
  const std::string content = "Exif\0\0"s + (isLittleEndian ? little : big);
  return bytes.insert(2, "\xFF\xE1\0"s + static_cast<char>(content.size() + 2) + content);
}

// Scaling a picture rounds its colours.
bool isRed(unsigned colour) { return colour >> 16 >= 0xFC && (colour & 0xFFFF) == 0; }

class FormFiles : public testing::Test {
 protected:
  // The page that a picture is put on, one pixel per point.
  Press::Picture drawn(const std::string& bytes, const Press::PicturePage& on) {
    write(folder / "logo", bytes);
    const Press::FormFile form(folder / "logo", on);
    EXPECT_TRUE(form.isPicture());
    const std::string pdf = Press::captureOverlay(form.pdf()).pdf;
    EXPECT_EQ(complaints(pdf), "");
    return render(pdf);
  }

  std::string refusal(const std::string& bytes) {
    write(folder / "logo.png", bytes);
    try {
      Press::FormFile(folder / "logo.png", page);
    } catch (const Press::Error& error) {
      return error.what();
    }
    return {};
  }

  const TestFolder folder;
  const Press::PicturePage page{{100, 60}, false};
};

TEST_F(FormFiles, LeaveADocumentAsItIs) {
  write(folder / "form.pdf", TestJob{}.bytes());
  const Press::FormFile form(folder / "form.pdf", page);
  EXPECT_EQ(form.pdf(), folder / "form.pdf");
  EXPECT_FALSE(form.isPicture());
}

TEST_F(FormFiles, PutAPictureOfItsOwnSizeInTheMiddle) {
  // 40 pixels at 96 to the inch are 30 points.
  const auto picture = drawn(png(40, std::vector<std::uint32_t>(40 * 40, 0xFFFF0000)), page);
  EXPECT_EQ(picture.width, 100);
  EXPECT_EQ(picture.height, 60);
  EXPECT_EQ(pixel(picture, 50, 30), red);
  EXPECT_EQ(pixel(picture, 36, 16), red);
  EXPECT_EQ(pixel(picture, 63, 43), red);
  EXPECT_EQ(pixel(picture, 33, 30), white);
  EXPECT_EQ(pixel(picture, 50, 13), white);
}

TEST_F(FormFiles, TakeThePicturesResolution) {
  constexpr int perMetre = 5669;  // 144 to the inch
  const auto picture = drawn(withResolution(png(40, std::vector<std::uint32_t>(40 * 40, 0xFFFF0000)), perMetre), page);
  EXPECT_EQ(pixel(picture, 42, 30), red);  // 20 points wide
  EXPECT_EQ(pixel(picture, 38, 30), white);
}

TEST_F(FormFiles, MakeAPictureAsLargeAsThePaperInItsProportions) {
  const auto picture = drawn(png(2, {0xFFFF0000, 0xFFFF0000, 0xFF0000FF, 0xFF0000FF}), {{100, 60}, true});
  EXPECT_EQ(pixel(picture, 25, 5), red);
  EXPECT_EQ(pixel(picture, 75, 55), blue);
  EXPECT_EQ(pixel(picture, 15, 5), white);
  EXPECT_EQ(pixel(picture, 85, 55), white);
}

TEST_F(FormFiles, MakeALargerPictureAsLargeAsThePaper) {
  const auto picture = drawn(png(400, std::vector<std::uint32_t>(400 * 100, 0xFFFF0000)), page);
  EXPECT_TRUE(isRed(pixel(picture, 1, 30)));
  EXPECT_TRUE(isRed(pixel(picture, 98, 30)));
  EXPECT_EQ(pixel(picture, 50, 16), white);
  EXPECT_TRUE(isRed(pixel(picture, 50, 20)));
}

TEST_F(FormFiles, KeepTheTransparencyOfAPicture) {
  write(folder / "logo.png", png(2, {0xFFFF0000, 0x00FF0000, 0x80FF0000, 0xFFFF0000}));
  const Press::FormFile form(folder / "logo.png", {{100, 100}, true});
  write(folder / "form.opa", Press::captureOverlay(form.pdf()).pdf);
  Press::Effects effects;
  effects.overlays = {{folder / "form.opa", Press::PageRule()}};
  effects.overlaysOverPage = true;
  const auto picture = render(
      printed(TestJob{.boxes = "/MediaBox [0 0 100 100]", .contents = {"0 1 0 rg 0 0 100 100 re f"}}.bytes(), effects));
  EXPECT_EQ(pixel(picture, 10, 10), red);
  EXPECT_EQ(pixel(picture, 90, 10), green);
  EXPECT_NEAR(pixel(picture, 10, 90) >> 16, 128, 2);
  EXPECT_NEAR(pixel(picture, 10, 90) >> 8 & 0xFF, 127, 2);
}

TEST_F(FormFiles, TakeAPictureWithoutTransparency) {
  const auto picture = drawn(png(1, {0xFF0000FF}, false), {{100, 60}, true});
  EXPECT_EQ(pixel(picture, 50, 30), blue);
}

TEST_F(FormFiles, TakeAJpeg) {
  const auto picture = drawn(redAndBlue, page);
  EXPECT_NEAR(pixel(picture, 36, 30) >> 16, 255, 3);
  EXPECT_NEAR(pixel(picture, 64, 30) & 0xFF, 255, 3);
  EXPECT_EQ(pixel(picture, 32, 30), white);
  EXPECT_EQ(pixel(picture, 67, 30), white);
  EXPECT_EQ(pixel(picture, 50, 20), white);
}

TEST_F(FormFiles, TakeAJpegOfInks) {
  const auto picture = drawn(cyan, {{100, 60}, true});
  EXPECT_LT(pixel(picture, 50, 30) >> 16, 0x40U);
  EXPECT_GT(pixel(picture, 50, 30) & 0xFF, 0xC0U);
}

TEST_F(FormFiles, TurnAJpegAsACameraSays) {
  // Where the red half is: x and y of a place in it.
  const struct {
    char orientation;
    int x, y;
  } turns[] = {{1, 36, 30}, {2, 64, 30}, {3, 64, 30}, {4, 36, 30}, {5, 50, 16}, {6, 50, 16}, {7, 50, 44}, {8, 50, 44}};
  for (const auto& [orientation, x, y] : turns)
    for (const bool isLittleEndian : {false, true}) {
      const auto picture = drawn(oriented(redAndBlue, orientation, isLittleEndian), page);
      EXPECT_GT(pixel(picture, x, y) >> 16, 0xF0U) << int{orientation};
      EXPECT_GT(pixel(picture, 100 - x, 60 - y) & 0xFF, 0xF0U) << int{orientation};
    }
}

TEST_F(FormFiles, RejectDamagedPictures) {
  const std::string whole = png(2, {0xFFFF0000, 0xFFFF0000, 0xFFFF0000, 0xFFFF0000});
  EXPECT_THAT(refusal(whole.substr(0, whole.find("IDAT") + 6)),
              HasSubstr("logo.png\" cannot become an overlay, because it is a damaged PNG file: save "));
  EXPECT_THAT(refusal("\xFF\xD8\xFF\xE0"), HasSubstr("a damaged JPEG file"));
  EXPECT_THAT(refusal(redAndBlue.substr(0, 30)), HasSubstr("a damaged JPEG file"));
}

TEST_F(FormFiles, RejectJpegsThatAPdfCannotHold) {
  std::string lossless = redAndBlue;
  lossless[lossless.find("\xFF\xC0") + 1] = '\xC3';
  EXPECT_THAT(refusal(lossless), HasSubstr("a JPEG file of a rare kind"));
}

}  // namespace
