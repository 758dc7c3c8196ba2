// Prints a watermark on awkward pages and compares pictures: the mark must have the same position and size as on a
// plain page that looks the same, and the page's own content must be unchanged.

#include "press/job/sample.h"
#include "tests/press/awkward_pages.h"
#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

using Press::Across;
using Press::Down;
using Press::Effects;
using Press::Picture;

namespace {

constexpr unsigned markColour = 0xFF00FF;  // Does not occur in the pages.

Effects marked(double angle = 0, Across across = Across::centre, Down down = Down::centre) {
  Effects effects;
  effects.watermark.text = "MARK";
  effects.watermark.face = "DejaVu Sans";
  effects.watermark.isBold = true;
  effects.watermark.size = 36;
  effects.watermark.colour = markColour;
  effects.watermark.angle = angle;
  effects.watermark.across = across;
  effects.watermark.down = down;
  return effects;
}

// An empty page of the same size.
std::string emptyPage(int width, int height) {
  return TestJob{.boxes = "/MediaBox [0 0 " + std::to_string(width) + " " + std::to_string(height) + "]",
                 .contents = {""}}
      .bytes();
}

// Whether two colours are visually the same: a nearly covered pixel may differ slightly.
bool isAlike(unsigned a, unsigned b) {
  constexpr int unseen = 12;
  for (const int shift : {0, 8, 16})
    if (std::abs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF)) > unseen) return false;
  return true;
}

// The number of wrong pixels in the picture of a page with the mark. Expected is the page where the mark alone, on an
// empty page, leaves the paper blank, and the mark's colour where it covers it.
int faults(const Picture& page, const Picture& mark, const Picture& both) {
  if (mark.argb.size() != page.argb.size() || both.argb.size() != page.argb.size()) return 1 << 20;
  int count = 0;
  for (std::size_t index = 0; index < page.argb.size(); ++index) {
    const unsigned alone = mark.argb[index] & 0xFFFFFF;
    if (alone == 0xFFFFFF) count += !isAlike(both.argb[index], page.argb[index]);
    if (alone == markColour) count += !isAlike(both.argb[index], markColour);
  }
  return count;
}

// Expects `job`, which looks like `before`, to print with the mark on it.
void expectMarked(const Picture& before, const std::string& job, Renderer renderer, const Effects& effects) {
  const Picture mark = render(printed(emptyPage(before.width, before.height), effects), renderer);
  const std::string after = printed(job, effects);
  EXPECT_EQ(faults(before, mark, render(after, renderer)), 0);
  EXPECT_EQ(complaints(after), "");
}

void expectMarked(const std::string& job, Renderer renderer, const Effects& effects) {
  expectMarked(render(job, renderer), job, renderer, effects);
}

struct Ink {
  int left = 1 << 20, top = 1 << 20, right = -1, bottom = -1;
};

// The bounding box of everything that is not white.
Ink inkOf(const Picture& picture) {
  Ink ink;
  for (int y = 0; y < picture.height; ++y)
    for (int x = 0; x < picture.width; ++x)
      if (pixel(picture, x, y) != 0xFFFFFF)
        ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x), std::max(ink.bottom, y)};
  return ink;
}

class MarkedPages : public testing::TestWithParam<AwkwardPage> {};

INSTANTIATE_TEST_SUITE_P(All, MarkedPages, testing::ValuesIn(awkwardPages()),
                         [](const auto& page) { return std::string(page.param.name); });

TEST_P(MarkedPages, HaveTheMarkUprightInTheMiddle) {
  expectMarked(GetParam().job.bytes(), GetParam().renderer, marked());
}

TEST_P(MarkedPages, HaveTheMarkClimbingInTheCorner) {
  expectMarked(GetParam().job.bytes(), GetParam().renderer, marked(315, Across::right, Down::lower));
}

TEST_P(MarkedPages, AreMirroredAndTurnedWithTheMark) {
  const AwkwardPage& page = GetParam();
  Effects effects = marked(315);
  const Picture straight = render(printed(page.job.bytes(), effects), page.renderer);
  effects.mirrorImage = effects.negativeImage = effects.rotate180 = true;
  // Letter edges are anti-aliased slightly differently when rotated.
  const Picture after = render(printed(page.job.bytes(), effects), page.renderer);
  const Picture wanted = withEffects(straight, effects);
  ASSERT_EQ(after.argb.size(), wanted.argb.size());
  std::size_t different = 0;
  for (std::size_t index = 0; index < wanted.argb.size(); ++index)
    different += std::abs(static_cast<int>(after.argb[index] & 0xFF00) -
                          static_cast<int>(wanted.argb[index] & 0xFF00)) > 64 * 256;
  EXPECT_LT(different, wanted.argb.size() / 500);
}

}  // namespace

TEST(MarkedPage, HasTheMarkInTheMiddleInEveryRenderer) {
  for (const Renderer renderer : allRenderers) {
    const Picture picture = render(printed(emptyPage(300, 200), marked()), renderer);
    const Ink ink = inkOf(picture);
    EXPECT_NEAR(ink.left + ink.right + 1, 300, 2) << static_cast<int>(renderer);
    EXPECT_NEAR(ink.top + ink.bottom + 1, 200, 2) << static_cast<int>(renderer);
    EXPECT_NEAR(ink.bottom - ink.top + 1, 36 * 0.729, 2) << static_cast<int>(renderer);  // the height of capitals
  }
}

TEST(MarkedPage, LooksTheSameInEveryRenderer) {
  Effects effects = marked(315);
  effects.watermark.transparency = 60;
  effects.watermark.text = "Draft 草稿";  // Synthetic bold beside a face with a bold design.
  for (const bool isOutlined : {false, true}) {
    effects.watermark.isOutlined = isOutlined;
    const std::string after = printed(TestJob{.boxes = "/MediaBox [0 0 200 300] /Rotate 90"}.bytes(), effects);
    const Picture poppler = render(after);
    for (const Renderer renderer : {Renderer::mupdf, Renderer::ghostscript}) {
      const Picture other = render(after, renderer);
      ASSERT_EQ(other.argb.size(), poppler.argb.size());
      std::size_t different = 0;  // Renderers anti-alias differently.
      for (std::size_t index = 0; index < other.argb.size(); ++index)
        different += std::abs(static_cast<int>(poppler.argb[index] & 0xFF00) -
                              static_cast<int>(other.argb[index] & 0xFF00)) > 100 * 256;
      EXPECT_LT(different, other.argb.size() / 100) << static_cast<int>(renderer);
    }
  }
}

TEST(MarkedPage, ShowsThroughWhatIsTransparent) {
  Effects effects = marked();
  effects.watermark.text = "■";
  effects.watermark.colour = 0x000000;
  effects.watermark.transparency = 60;
  for (const Renderer renderer : allRenderers) {
    const Picture picture = render(printed(emptyPage(200, 300), effects), renderer);
    EXPECT_NEAR(pixel(picture, 100, 150) & 0xFF, 153, 1) << static_cast<int>(renderer);
  }
  EXPECT_THAT(printed(emptyPage(200, 300), effects).substr(0, 8), testing::Ge("%PDF-1.4"));
}

TEST(MarkedPage, HasTheMarkUnderItsContentWhenThatIsAsked) {
  Effects effects = marked();
  effects.watermark.text = "■";
  const std::string job = TestJob{.contents = {"0 0 1 rg 0 0 200 150 re f"}}.bytes();
  EXPECT_EQ(pixel(render(printed(job, effects)), 100, 155), markColour);
  effects.watermark.isUnderPage = true;
  const Picture under = render(printed(job, effects));
  EXPECT_EQ(pixel(under, 100, 155), 0x0000FFu);
  EXPECT_EQ(pixel(under, 100, 145), markColour);
}

TEST(MarkedPage, CanBeTheFirstAlone) {
  Effects effects = marked();
  const TestFolder folder;
  write(folder / "in.pdf", Press::samplePdf());
  for (const bool firstOnly : {false, true}) {
    effects.watermark.firstOnly = firstOnly;
    Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects);
    Press::Job plain(folder / "in.pdf"), after(folder / "out.pdf");
    for (int page = 1; page <= 4; ++page) {
      const Picture picture = render(after.printPage(page, {}));
      const bool isMarked = difference(picture, render(plain.printPage(page, {}))) > 0;
      EXPECT_EQ(isMarked, page == 1 || !firstOnly) << page;
      EXPECT_EQ(difference(render(plain.printPage(page, effects)), picture), 0) << page;
    }
  }
}

TEST(MarkedPage, IsPrintedTwiceOverWithTwoMarks) {
  Effects left = marked(0, Across::left, Down::upper), right = marked(0, Across::right, Down::lower);
  const Picture both = render(printed(printed(emptyPage(400, 400), left), right));
  const Picture first = render(printed(emptyPage(400, 400), left)),
                second = render(printed(emptyPage(400, 400), right));
  EXPECT_EQ(faults(first, second, both), 0);
}

TEST(MarkedPage, TellsOfAFaceThatIsMissing) {
  const TestFolder folder;
  write(folder / "in.pdf", emptyPage(200, 200));
  Effects effects = marked();
  EXPECT_THAT(Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects), testing::IsEmpty());
  effects.watermark.face = "No Such Face";
  EXPECT_THAT(Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects),
              testing::ElementsAre(testing::HasSubstr("\"No Such Face\" is not installed")));
}

TEST(MarkedPage, RefusesWhatThePropertiesDoNotMakeSenseOf) {
  const TestFolder folder;
  write(folder / "in.pdf", emptyPage(200, 200));
  const Effects effects = Press::effectsFromProperties(
      {{"Watermark", "Watermark"}, {"WatermarkText", "x"}, {"WatermarkTextColour", "#12"}});
  EXPECT_THROW(Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects), Press::Error);
  EXPECT_THROW(Press::printPage(folder / "in.pdf", 1, effects), Press::Error);
  EXPECT_THAT(folder.names(), testing::ElementsAre("in.pdf"));
}

// The same page in all kinds of PDF files.
TEST(MarkedPage, IsTheSameInEveryKindOfFile) {
  const TestFolder folder;
  write(folder / "plain.pdf", TestJob{.boxes = "/MediaBox [0 0 200 300] /Rotate 90"}.bytes());
  const std::string in = "'" + (folder / "plain.pdf").string() + "' '";
  for (const char* options : {"--linearize", "--object-streams=generate", "--encrypt '' owner 256 --",
                              "--coalesce-contents", "--qdf", "--compress-streams=y --recompress-flate"}) {
    SCOPED_TRACE(options);
    ASSERT_EQ(run("qpdf " + std::string(options) + " " + in + (folder / "other.pdf").string() + "'").status, 0);
    expectMarked(read(folder / "other.pdf"), Renderer::poppler, marked(315));
  }
  const std::string plain = read(folder / "plain.pdf");
  std::string damaged = plain;
  damaged.replace(damaged.rfind("startxref") + 10, 1, "9");
  expectMarked(render(plain), damaged, Renderer::poppler, marked(315));
  const std::size_t table = plain.rfind("\nxref\n");
  damaged = plain.substr(0, table + 1) + plain.substr(plain.rfind("trailer"));
  expectMarked(render(plain), damaged, Renderer::poppler, marked(315));
}

TEST(MarkedPage, CanBeOfAnyPaper) {
  for (const char* box : {"[0 0 842 1191]", "[0 0 1191 842]", "[0 0 1224 792]", "[0 0 792 1224]", "[0 0 3000 2400]",
                          "[0 0 36 36]", "[0 0 9 300]"}) {
    SCOPED_TRACE(box);
    const std::string boxes = std::string("/MediaBox ") + box;
    for (const char* turn : {"", " /Rotate 90"})
      expectMarked(TestJob{.boxes = boxes + turn}.bytes(), Renderer::poppler, marked(315));
  }
}

TEST(MarkedPage, IsMarkedByItsPlaceWhereAnotherPlaceHasTheSamePage) {
  Effects effects = marked();
  effects.watermark.firstOnly = true;
  TestJob job;
  job.parent = "/Kids [3 0 R 3 0 R 3 0 R] /Count 3 /Resources << >>";
  job.boxes = "";
  job.parent += " /MediaBox [0 0 200 300]";
  std::string bytes = job.bytes();
  bytes.replace(bytes.find("/Count 1 /Kids [3 0 R]"), 22, std::string(22, ' '));
  const TestFolder folder;
  write(folder / "in.pdf", bytes);
  Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects);
  EXPECT_EQ(complaints(read(folder / "out.pdf")), "");
  Press::Job plain(folder / "in.pdf"), after(folder / "out.pdf");
  ASSERT_EQ(after.pageCount(), 3);
  for (int page = 1; page <= 3; ++page) {
    const bool isMarked = difference(render(after.printPage(page, {})), render(plain.printPage(page, {}))) > 0;
    EXPECT_EQ(isMarked, page == 1) << page;
  }
}

TEST(MarkedPage, KeepsItsPartInTheStructureOfTheDocument) {
  // An unbalanced q, for which the content is moved into a form.
  const TestJob job{.contents = {"q /P << /MCID 0 >> BDC BT /F 30 Tf 20 200 Td (Tagged) Tj ET EMC "
                                 "/P << /MCID 1 >> BDC BT /F 30 Tf 20 100 Td (text) Tj ET EMC"},
                    .resources = "/Font << /F << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >>",
                    .page = "/StructParents 0",
                    .catalog = "/MarkInfo << /Marked true >> /StructTreeRoot 4 0 R",
                    .objects = {"<< /Type /StructTreeRoot /K 5 0 R /ParentTree << /Nums [0 [6 0 R 7 0 R]] >> >>",
                                "<< /Type /StructElem /S /Document /P 4 0 R /K [6 0 R 7 0 R] >>",
                                "<< /Type /StructElem /S /P /P 5 0 R /Pg 3 0 R /K 0 >>",
                                "<< /Type /StructElem /S /P /P 5 0 R /Pg 3 0 R /K [<< /Type /MCR /MCID 1 >>] >>"}};
  const TestFolder folder;
  write(folder / "out.pdf", printed(job.bytes(), marked()));
  const std::string structure = run("pdfinfo -struct-text '" + (folder / "out.pdf").string() + "'").output;
  EXPECT_THAT(structure, testing::AllOf(testing::HasSubstr("\"Tagged\""), testing::HasSubstr("\"text\"")));
  EXPECT_EQ(complaints(read(folder / "out.pdf")), "");
}

TEST(MarkedPage, IsPrintedWhateverItsStructureIs) {
  for (const char* tree : {"7", "<< /Nums 7 >>", "<< /Nums [0 7] >>",
                           "<< /Nums [0 [7 null [] << /K 7 >> 5 0 R 3 0 R]] >>", "<< /Kids [5 0 R] >>"}) {
    const TestJob job{.contents = {"q"},
                      .page = "/StructParents 0",
                      .catalog = "/StructTreeRoot 4 0 R",
                      .objects = {std::string("<< /ParentTree ") + tree + " >>",
                                  "<< /Kids [5 0 R] /K [5 0 R << /MCID 5 0 R >> 0 (text) [0]] >>"}};
    EXPECT_EQ(complaints(printed(job.bytes(), marked())), "") << tree;
  }
}

TEST(MarkedPage, IsMarkedWhereAPartOfItsContentIsDamaged) {
  TestJob job{.contents = {},
              .page = "/Contents [4 0 R 5 0 R]",
              .objects = {streamObject("", "q 0.5 0 0 0.5 0 0 cm 0 0 1 rg 0 0 100 100 re f"),
                          streamObject("/Filter /FlateDecode", "garbage")}};
  Effects effects = marked();
  effects.watermark.text = "■";
  for (const Renderer renderer : allRenderers) {
    const Picture picture = render(printed(job.bytes(), effects), renderer);
    EXPECT_EQ(pixel(picture, 100, 150), markColour) << static_cast<int>(renderer);
    EXPECT_TRUE(isAlike(pixel(picture, 25, 275), 0x0000FF)) << static_cast<int>(renderer);
  }
}
