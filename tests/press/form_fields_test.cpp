// Form fields without an appearance.

#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using Press::Effects;
using Press::Picture;
using testing::HasSubstr;
using testing::Not;

namespace {

// A page with one field, 160 wide and 60 high at (20, 220), or 20 points below the upper left corner as displayed.
TestJob fieldJob(const std::string& entries, bool readersDraw = false) {
  return {.contents = {""},
          .page = "/Annots [4 0 R]",
          .catalog =
              std::string("/AcroForm << /Fields [4 0 R] /DA (/F 20 Tf 0 0 1 rg) /DR << /Font << /F << /Type /Font "
                          "/Subtype /Type1 /BaseFont /Helvetica >> >> >>") +
              (readersDraw ? " /NeedAppearances true >>" : " >>"),
          .objects = {"<< /Type /Annot /Subtype /Widget /F 4 /T (Field) /Rect [20 220 180 280] " + entries + " >>"}};
}

// The page printed with an invisible effect.
Picture printedPage(const TestJob& job) {
  Effects effects;
  effects.watermark.text = ".";
  effects.watermark.face = "DejaVu Sans";
  effects.watermark.transparency = 100;
  return render(printed(job.bytes(), effects));
}

Picture drawn(const std::string& entries) { return printedPage(fieldJob(entries)); }

// The bounds of non-white pixels, from the top left.
struct Ink {
  int left = 1 << 20, top = 1 << 20, right = -1, bottom = -1;
};

Ink inkOf(const Picture& picture) {
  Ink ink;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      if (pixel(picture, x, y) == 0xFFFFFF) continue;
      ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x), std::max(ink.bottom, y)};
    }
  }
  return ink;
}

int difference(const std::string& oneField, const std::string& otherField) {
  return ::difference(drawn(oneField), drawn(otherField));
}

}  // namespace

TEST(FormFields, WithoutALookAreDrawnFromTheirValues) {
  const Picture picture = drawn("/FT /Tx /V (Ada)");
  const Ink ink = inkOf(picture);
  EXPECT_NEAR(ink.left, 23, 2);
  EXPECT_NEAR((ink.top + ink.bottom) / 2, 50, 4);
  EXPECT_NEAR(ink.bottom - ink.top, 15, 4);
  EXPECT_LT(ink.right, 70);
  EXPECT_NEAR(pixel(picture, (ink.left + ink.right) / 2, 50) & 0xFF, 0xFF, 1) << "blue, or paper";
}

TEST(FormFields, AreMovedWithTheirPage) {
  const Picture before = drawn("/FT /Tx /V (Ada)");
  const Ink ink = inkOf(mirrored(before));
  const Ink after = inkOf(render(printed(fieldJob("/FT /Tx /V (Ada)").bytes(), {.mirrorImage = true})));
  EXPECT_NEAR(after.left, ink.left, 1);
  EXPECT_NEAR(after.top, ink.top, 1);
  EXPECT_NEAR(after.right, ink.right, 1);
}

TEST(FormFields, AreLeftAloneWhereNothingIsDoneToTheJob) {
  const std::string after = plainText(printed(fieldJob("/FT /Tx /V (Ada)", true).bytes(), {}));
  EXPECT_THAT(after, HasSubstr("/NeedAppearances true"));
  EXPECT_THAT(after, Not(HasSubstr("/AP")));
}

TEST(FormFields, HaveTheLookThatTheyBringAlong) {
  TestJob job = fieldJob("/FT /Tx /V (Ada) /AP << /N 5 0 R >>");
  job.objects.push_back(streamObject("/Type /XObject /Subtype /Form /BBox [0 0 160 60]", "1 0 0 rg 0 0 160 60 re f"));
  EXPECT_EQ(pixel(printedPage(job), 100, 50), 0xFF0000u);
}

TEST(FormFields, AreDrawnAnewWhereTheDocumentAsksForIt) {
  TestJob job = fieldJob("/FT /Tx /V (Ada) /AP << /N 5 0 R >>", true);
  job.objects.push_back(streamObject("/Type /XObject /Subtype /Form /BBox [0 0 160 60]", "1 0 0 rg 0 0 160 60 re f"));
  EXPECT_EQ(::difference(printedPage(job), drawn("/FT /Tx /V (Ada)")), 0);
}

TEST(FormFields, ThatDoNotPrintAreNotDrawn) {
  for (const char* flags : {"/F 0", "/F 6"}) {
    TestJob job = fieldJob("/FT /Tx /V (Ada)");
    job.objects[0].replace(job.objects[0].find("/F 4"), 4, flags);
    EXPECT_THAT(plainText(printed(job.bytes(), {.mirrorImage = true})), Not(HasSubstr("/AP"))) << flags;
  }
}

TEST(FormFields, AreAlignedAsTheySay) {
  const Ink left = inkOf(drawn("/FT /Tx /V (Ada) /Q 0")), middle = inkOf(drawn("/FT /Tx /V (Ada) /Q 1")),
            right = inkOf(drawn("/FT /Tx /V (Ada) /Q 2"));
  EXPECT_NEAR(left.left, 23, 2);
  EXPECT_NEAR((middle.left + middle.right) / 2, 100, 3);
  EXPECT_NEAR(right.right, 177, 2);
}

TEST(FormFields, OfSeveralLinesBreakThem) {
  const std::string flowing = "/FT /Tx /Ff 4096 /DA (/F 10 Tf 0 g) /V ";
  const Ink one = inkOf(drawn(flowing + "(One line)"));
  EXPECT_LT(one.bottom, 35) << "from the top";
  EXPECT_GT(inkOf(drawn(flowing + "(One\\rline)")).bottom, one.bottom + 5);
  EXPECT_EQ(difference(flowing + "(One\\rline)", flowing + "(One\\nline)"), 0);
  EXPECT_EQ(difference(flowing + "(One\\rline)", flowing + "(One\\r\\nline)"), 0);
  const Ink broken = inkOf(drawn(flowing + "(Words that together are wider than their field, and go on below)"));
  EXPECT_GT(broken.bottom, one.bottom + 5);
  EXPECT_LT(broken.right, 180);
}

TEST(FormFields, KeepPasswordsSecret) {
  const std::string password = "/FT /Tx /Ff 8192 /V ";
  EXPECT_EQ(difference(password + "(secret)", password + "(hidden)"), 0);
  EXPECT_NE(difference(password + "(secret)", password + "(hide)"), 0);
}

TEST(FormFields, OfCellsHaveALetterInEach) {
  const Ink ink = inkOf(drawn("/FT /Tx /Ff 16777216 /MaxLen 4 /V (HHH)"));
  EXPECT_NEAR((ink.left + ink.right) / 2, 20 + 60, 3);  // the centre of three of four cells
  EXPECT_NEAR(ink.right - ink.left, 80 + 14, 4);
}

TEST(FormFields, TakeAnyScript) {
  for (const char* value : {"<FEFF039503BB03BB>", "<FEFF05E905DC05D505DD>", "<FEFF65E5672C>"})
    EXPECT_GT(inkOf(drawn(std::string("/FT /Tx /V ") + value)).right, 30) << value;
}

TEST(FormFields, FitTextThatHasNoSize) {
  const std::string fitting = "/FT /Tx /DA (/F 0 Tf 0 g) /V ";
  const Ink small =
      inkOf(drawn(fitting + "(A text that is far too long for its field at a size that is as high as it)"));
  const Ink large = inkOf(drawn(fitting + "(H)"));
  EXPECT_NEAR(large.bottom - large.top, 27, 4);
  EXPECT_LT(small.bottom - small.top, 15);
  EXPECT_GT(small.right, 160);
  EXPECT_LT(small.right, 180);
  const Ink flowing = inkOf(drawn("/FT /Tx /Ff 4096 /DA (/F 0 Tf 0 g) /V (" + std::string(40, 'x') + " many words, " +
                                  "so many that they need lines and lines and lines of them to be told in a field)"));
  EXPECT_LT(flowing.bottom, 80);
}

TEST(FormFields, OfChoicesShowTheirNames) {
  const std::string options = "/FT /Ch /Ff 131072 /Opt [[(a) (Apple)] [(b) (Banana)] (Cherry)] /V ";
  EXPECT_EQ(difference(options + "(b)", "/FT /Tx /V (Banana)"), 0);
  EXPECT_EQ(difference(options + "(Cherry)", "/FT /Tx /V (Cherry)"), 0);
  EXPECT_EQ(difference("/FT /Ch /V [(One) (Two)]", "/FT /Tx /Ff 4096 /V (One\\nTwo)"), 0);
}

TEST(FormFields, HaveTheirPaperAndBorder) {
  const Picture picture = drawn("/FT /Tx /V () /MK << /BG [1 1 0] /BC [1 0 0] >> /BS << /W 4 >>");
  EXPECT_EQ(pixel(picture, 100, 50), 0xFFFF00u);
  EXPECT_EQ(pixel(picture, 22, 50), 0xFF0000u);
  EXPECT_EQ(pixel(picture, 18, 50), 0xFFFFFFu);
}

TEST(FormFields, AreTurnedAsTheySay) {
  const Ink upwards = inkOf(drawn("/FT /Tx /V (Ada) /MK << /R 90 >>"));
  EXPECT_GT(upwards.bottom - upwards.top, upwards.right - upwards.left);
  EXPECT_NEAR(upwards.bottom, 77, 2) << "begins below";
  const Ink over = inkOf(drawn("/FT /Tx /V (Ada) /MK << /R 180 >>"));
  EXPECT_NEAR(over.right, 177, 2);
}

TEST(FormFields, InheritWhatTheyAre) {
  TestJob job = fieldJob("/Parent 5 0 R");
  job.objects.push_back("<< /FT /Tx /V (Ada) /Kids [4 0 R] >>");
  EXPECT_EQ(::difference(printedPage(job), drawn("/FT /Tx /V (Ada)")), 0);
}

TEST(FormFields, OfBoxesShowTheirState) {
  const std::string looks =
      streamObject("/Type /XObject /Subtype /Form /BBox [0 0 160 60]", "0 0 1 rg 0 0 160 60 re f");
  TestJob job = fieldJob("/FT /Btn /V /On /AS /Off /AP << /N << /On 5 0 R >> >>", true);
  job.objects.push_back(looks);
  EXPECT_EQ(pixel(printedPage(job), 100, 50), 0x0000FFu);
}

TEST(FormFields, ThatAreNonsenseDoNoHarm) {
  for (const char* entries : {"/FT /Tx /V 7",
                              "/FT /Tx /V [7 (a) null]",
                              "/FT /Ch /V (a) /Opt [7 [] [(a)] [7 7] [(a) 7]]",
                              "/FT /Tx /V (a) /DA 7",
                              "/FT /Tx /V (a) /DA (Tf rg k g /F Tf x y z rg 1e400 Tf)",
                              "/FT /Tx /V (a) /MK 7",
                              "/FT /Tx /V (a) /MK << /BG [(a)] /BC 7 >>",
                              "/FT /Tx /V (a) /Rect [0 0 0 0]",
                              "/FT /Tx /V (a) /Rect 7",
                              "/FT /Tx /V (a) /Q 99",
                              "/FT /Tx /V (a) /MaxLen -7 /Ff 16777216",
                              "/FT /Tx /V <FEFFD800>",
                              "/FT /Tx /V (a) /AP 7",
                              "/FT /Tx /V (a) /AP << /N 7 >>",
                              "/Parent 4 0 R",
                              "/FT 7",
                              "/FT /Btn /V 7",
                              "/FT /Tx /V (\\000\\001\\177) /Ff 4096",
                              "/FT /Tx /V ()",
                              "/FT /Tx /Ff 4096 /V (   )"})
    for (const bool readersDraw : {false, true})
      EXPECT_EQ(complaints(printed(fieldJob(entries, readersDraw).bytes(), {.mirrorImage = true})), "") << entries;
}

TEST(FormFields, OfTooMuchTextStayAsTheyAre) {
  EXPECT_EQ(complaints(printed(fieldJob("/FT /Tx /Ff 4096 /V (" + std::string(1'000'000, 'x') + ")").bytes(),
                               {.mirrorImage = true})),
            "");
}
