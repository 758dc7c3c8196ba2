// Validation of picture files before faces load them.
#include "host/documents/bitmap.h"
#include "tests/files/scratch.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using Refhost::isBitmap;

std::string number(std::uint64_t value, std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) bytes += static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
  return bytes;
}

struct Bitmap {
  std::uint32_t width = 3;
  std::uint32_t height = 2;
  std::uint32_t bits = 24;
  std::uint32_t compression = 0;
  std::uint32_t header = 40;
  std::uint32_t pixelsAt = 54;
  std::size_t pixelBytes = 24;

  std::string bytes() const {
    std::string file = "BM" + number(0, 8) + number(pixelsAt, 4) + number(header, 4);
    if (header == 12)
      file += number(width, 2) + number(height, 2) + number(1, 2) + number(bits, 2);
    else
      file += number(width, 4) + number(height, 4) + number(1, 2) + number(bits, 2) + number(compression, 4);
    file.resize(pixelsAt + pixelBytes);
    return file;
  }
};

TEST(Bitmap, OfEachKindIsOne) {
  EXPECT_TRUE(isBitmap(Bitmap().bytes()));
  EXPECT_TRUE(isBitmap(Bitmap{.bits = 32}.bytes()));
  EXPECT_TRUE(isBitmap(Bitmap{.bits = 8, .pixelsAt = 54 + 1024, .pixelBytes = 8}.bytes()));
  EXPECT_TRUE(isBitmap(Bitmap{.bits = 1, .pixelsAt = 62, .pixelBytes = 8}.bytes()));
  EXPECT_TRUE(isBitmap(Bitmap{.bits = 16, .compression = 3, .pixelsAt = 66, .pixelBytes = 16}.bytes()));
  EXPECT_TRUE(isBitmap(Bitmap{.header = 12, .pixelsAt = 26}.bytes()));
  EXPECT_TRUE(isBitmap(Bitmap{.header = 124, .pixelsAt = 138}.bytes()));
  EXPECT_TRUE(isBitmap(Bitmap{.height = static_cast<std::uint32_t>(-2)}.bytes())) << "the topmost row first";
}

TEST(Bitmap, ThatIsCutOffAnywhereIsNone) {
  const std::string whole = Bitmap().bytes();
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(isBitmap(whole.substr(0, length))) << length;
}

TEST(Bitmap, OfASizeThatMakesNoSenseIsNone) {
  for (const std::uint32_t side : {0U, 4097U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    EXPECT_FALSE(isBitmap(Bitmap{.width = side, .pixelBytes = 100'000}.bytes())) << side;
    if (side != 0xFFFFFFFFU) {
      EXPECT_FALSE(isBitmap(Bitmap{.height = side, .pixelBytes = 100'000}.bytes())) << side;
    }
  }
  EXPECT_FALSE(isBitmap(Bitmap{.width = 4096, .height = 4096}.bytes()));
}

TEST(Bitmap, OfAFormThatNobodyReadsIsNone) {
  EXPECT_FALSE(isBitmap(Bitmap{.bits = 7}.bytes()));
  EXPECT_FALSE(isBitmap(Bitmap{.bits = 0}.bytes()));
  EXPECT_FALSE(isBitmap(Bitmap{.compression = 1}.bytes()));
  EXPECT_FALSE(isBitmap(Bitmap{.bits = 8, .compression = 3}.bytes()));
  EXPECT_FALSE(isBitmap(Bitmap{.header = 39}.bytes()));
  EXPECT_FALSE(isBitmap(Bitmap{.header = 0xFFFFFFFF}.bytes()));
  EXPECT_FALSE(isBitmap(Bitmap{.pixelsAt = 53, .pixelBytes = 25}.bytes())) << "the pixels begin in the header";
}

TEST(Bitmap, IsNothingElse) {
  EXPECT_FALSE(isBitmap(""));
  EXPECT_FALSE(isBitmap("BM"));
  EXPECT_FALSE(isBitmap("%PDF-1.7"));
  EXPECT_FALSE(isBitmap(std::string(1000, '\0')));
  std::mt19937 random(3);
  for (int round = 0; round < 1000; ++round) {
    std::string bytes(random() % 200, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    isBitmap("BM" + bytes);
  }
}

}  // namespace
