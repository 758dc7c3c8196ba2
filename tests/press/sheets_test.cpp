// Several pages on a sheet.

#include "press/job/sample.h"
#include "press/pdf/bytes.h"
#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using Press::Effects;
using Press::PageRule;
using Press::Picture;

namespace {

constexpr unsigned white = 0xFFFFFF;
const unsigned colours[] = {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF};

// A job of five pages, each in a single colour.
std::string colourJob(const std::string& page = "/MediaBox [0 0 200 300]") {
  using Press::reference;
  Press::PdfBytes pdf;
  pdf.add("<< /Type /Catalog /Pages 2 0 R /Outlines 3 0 R >>");
  const int pages = pdf.reserve();
  pdf.add("<< /Type /Outlines >>");
  std::string kids;
  for (const char* colour : {"1 0 0", "0 1 0", "0 0 1", "1 1 0", "1 0 1"}) {
    const int content = pdf.addStream("", std::string(colour) + " rg 0 0 1000 1000 re f");
    kids += reference(pdf.add("<< /Type /Page /Parent 2 0 R " + page + " /Contents " + reference(content) +
                              " /Resources << >> >>")) +
            " ";
  }
  pdf.set(pages, "<< /Type /Pages /Count 5 /Kids [" + kids + "] >>");
  return pdf.finish(1);
}

class Sheets : public testing::Test {
 protected:
  // Pictures of the sheets that a job prints.
  std::vector<Picture> print(const std::string& job, const Effects& effects) {
    write(folder / "in.pdf", job);
    Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects);
    EXPECT_EQ(complaints(read(folder / "out.pdf")), "");
    Press::Job sheets(folder / "out.pdf");
    std::vector<Picture> pictures;
    for (int sheet = 1; sheet <= sheets.pageCount(); ++sheet) pictures.push_back(render(sheets.printPage(sheet, {})));
    return pictures;
  }

  const TestFolder folder;
};

Effects on(int pagesOnSheet) {
  Effects effects;
  effects.pagesOnSheet = pagesOnSheet;
  return effects;
}

// Effects with a black square in the centre of pages or sheets.
Effects squareOn(int pagesOnSheet, bool onEachPage) {
  Effects effects = on(pagesOnSheet);
  effects.watermark.text = "■";
  effects.watermark.face = "DejaVu Sans";
  effects.watermark.size = 40;
  effects.watermark.colour = 0;
  effects.watermark.onEachPage = onEachPage;
  return effects;
}

}  // namespace

TEST_F(Sheets, WithTwoUprightPagesLieOnTheirSide) {
  const std::vector<Picture> sheets = print(colourJob(), on(2));
  ASSERT_EQ(sheets.size(), 3u);
  EXPECT_EQ(sheets[0].width, 300);
  EXPECT_EQ(sheets[0].height, 200);
  EXPECT_EQ(pixel(sheets[0], 75, 100), colours[0]);
  EXPECT_EQ(pixel(sheets[0], 225, 100), colours[1]);
  EXPECT_EQ(pixel(sheets[1], 75, 100), colours[2]);
  EXPECT_EQ(pixel(sheets[1], 225, 100), colours[3]);
  EXPECT_EQ(pixel(sheets[2], 75, 100), colours[4]);
  EXPECT_EQ(pixel(sheets[2], 225, 100), white);
  // 200 x 300 fits into 150 x 200 at two thirds, centred.
  EXPECT_EQ(pixel(sheets[0], 10, 100), colours[0]);
  EXPECT_EQ(pixel(sheets[0], 6, 100), white);
}

TEST_F(Sheets, WithTwoWidePagesStandUpright) {
  const std::vector<Picture> sheets = print(colourJob("/MediaBox [0 0 300 200]"), on(2));
  ASSERT_EQ(sheets.size(), 3u);
  EXPECT_EQ(sheets[0].width, 200);
  EXPECT_EQ(sheets[0].height, 300);
  EXPECT_EQ(pixel(sheets[0], 100, 75), colours[0]);
  EXPECT_EQ(pixel(sheets[0], 100, 225), colours[1]);
}

TEST_F(Sheets, WithFourPagesReadFromTheTopLeft) {
  const std::vector<Picture> sheets = print(colourJob(), on(4));
  ASSERT_EQ(sheets.size(), 2u);
  EXPECT_EQ(sheets[0].width, 200);
  EXPECT_EQ(sheets[0].height, 300);
  EXPECT_EQ(pixel(sheets[0], 50, 75), colours[0]);
  EXPECT_EQ(pixel(sheets[0], 150, 75), colours[1]);
  EXPECT_EQ(pixel(sheets[0], 50, 225), colours[2]);
  EXPECT_EQ(pixel(sheets[0], 150, 225), colours[3]);
  EXPECT_EQ(pixel(sheets[1], 50, 75), colours[4]);
  EXPECT_EQ(pixel(sheets[1], 150, 225), white);
}

TEST_F(Sheets, ShowPagesAsTheyAreSeen) {
  const std::string page = TestJob{.boxes = "/MediaBox [-20 5 210 290] /CropBox [10 25 160 225] /Rotate 90"}.bytes();
  const Picture alone = render(page);  // 200 x 150
  const std::vector<Picture> sheets = print(page, on(4));
  ASSERT_EQ(sheets.size(), 1u);
  ASSERT_EQ(sheets[0].width, alone.width);
  for (int y = 1; y < 75; y += 3)
    for (int x = 1; x < 100; x += 3) {
      const bool isInside = pixel(alone, 2 * x - 1, 2 * y - 1) == pixel(alone, 2 * x + 1, 2 * y + 1) &&
                            pixel(alone, 2 * x - 1, 2 * y + 1) == pixel(alone, 2 * x + 1, 2 * y - 1);
      if (isInside) {
        EXPECT_EQ(pixel(sheets[0], x, y), pixel(alone, 2 * x, 2 * y)) << x << " " << y;
      }
    }
}

TEST_F(Sheets, HaveTheWatermarkOnce) {
  const std::vector<Picture> sheets = print(colourJob(), squareOn(4, false));
  for (const Picture& sheet : sheets) EXPECT_EQ(pixel(sheet, 100, 150), 0u);
  EXPECT_EQ(pixel(sheets[0], 50, 75), colours[0]);
}

TEST_F(Sheets, HaveTheWatermarkOnEachPageWhenThatIsAsked) {
  const std::vector<Picture> sheets = print(colourJob(), squareOn(4, true));
  EXPECT_EQ(pixel(sheets[0], 100, 150), colours[3]);
  for (const auto& [x, y] : {std::pair(50, 75), {150, 75}, {50, 225}, {150, 225}})
    EXPECT_EQ(pixel(sheets[0], x, y), 0u);
  EXPECT_EQ(pixel(sheets[1], 50, 75), 0u);
  EXPECT_EQ(pixel(sheets[1], 150, 225), white);
}

TEST_F(Sheets, CountAsPagesForTheFirstOnly) {
  Effects effects = squareOn(4, false);
  effects.watermark.firstOnly = true;
  std::vector<Picture> sheets = print(colourJob(), effects);
  EXPECT_EQ(pixel(sheets[0], 100, 150), 0u);
  EXPECT_EQ(pixel(sheets[1], 100, 150), white);
  effects.watermark.onEachPage = true;
  sheets = print(colourJob(), effects);
  EXPECT_EQ(pixel(sheets[0], 50, 75), 0u);
  EXPECT_EQ(pixel(sheets[0], 150, 75), colours[1]);
}

TEST_F(Sheets, HaveOverlaysOnceOrOnEachPage) {
  write(folder / "form.opa", TestJob{.contents = {"0 g 90 140 20 20 re f"}}.bytes());
  Effects effects = on(4);
  effects.overlays = {{folder / "form.opa", PageRule("2")}};
  effects.overlaysOverPage = true;
  std::vector<Picture> sheets = print(colourJob(), effects);  // on the second sheet
  EXPECT_EQ(pixel(sheets[0], 100, 150), colours[3]);
  EXPECT_EQ(pixel(sheets[1], 100, 150), 0u);
  effects.overlaysOnEachPage = true;
  sheets = print(colourJob(), effects);  // on the second page
  EXPECT_EQ(pixel(sheets[0], 50, 75), colours[0]);
  EXPECT_EQ(pixel(sheets[0], 150, 75), 0u);
  EXPECT_EQ(pixel(sheets[1], 50, 75), colours[4]);
}

TEST_F(Sheets, AreMirroredTurnedAndNegatedAsAWhole) {
  Effects effects = squareOn(2, true);
  const std::vector<Picture> straight = print(Press::samplePdf(), effects);
  effects.mirrorImage = effects.negativeImage = true;
  const std::vector<Picture> changed = print(Press::samplePdf(), effects);
  ASSERT_EQ(changed.size(), straight.size());
  for (std::size_t sheet = 0; sheet < changed.size(); ++sheet) {
    const Picture wanted = withEffects(straight[sheet], effects);
    ASSERT_EQ(changed[sheet].argb.size(), wanted.argb.size());
    std::size_t different = 0;
    for (std::size_t index = 0; index < wanted.argb.size(); ++index)
      different += std::abs(static_cast<int>(changed[sheet].argb[index] & 0xFF) -
                            static_cast<int>(wanted.argb[index] & 0xFF)) > 100;
    EXPECT_LT(different, wanted.argb.size() / 100) << sheet;
  }
}

TEST_F(Sheets, LookTheSameInThePreview) {
  const Effects effects = squareOn(2, true);
  const std::vector<Picture> sheets = print(colourJob(), effects);
  Press::Job job(folder / "in.pdf");
  for (int page = 1; page <= 5; ++page)
    EXPECT_EQ(difference(render(job.printPage(page, effects)), sheets[static_cast<std::size_t>((page - 1) / 2)]), 0);
}

TEST_F(Sheets, StoreAPageOnceThatIsNamedMoreOften) {
  Press::PdfBytes pdf;
  pdf.add("<< /Type /Catalog /Pages 2 0 R >>");
  pdf.add("<< /Type /Pages /Count 6 /Kids [3 0 R 3 0 R 3 0 R 3 0 R 3 0 R 3 0 R] >>");
  pdf.add("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Resources << >> /Contents 4 0 R >>");
  pdf.addStream("", "1 0 0 rg 0 0 1000 1000 re f");
  const std::vector<Picture> sheets = print(pdf.finish(1), on(2));
  ASSERT_EQ(sheets.size(), 3u);
  for (const Picture& sheet : sheets) EXPECT_EQ(difference(sheet, sheets.front()), 0);
  const std::string text = plainText(read(folder / "out.pdf"));
  std::size_t forms = 0;
  for (std::size_t at = text.find("/Subtype /Form"); at != std::string::npos; at = text.find("/Subtype /Form", at + 1))
    ++forms;
  EXPECT_EQ(forms, 1u);
}

TEST_F(Sheets, LeadNowhere) {
  print(colourJob(), on(2));
  EXPECT_THAT(plainText(read(folder / "out.pdf")), testing::Not(testing::HasSubstr("/Outlines")));
}
