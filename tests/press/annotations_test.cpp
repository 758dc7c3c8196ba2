#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using Press::Effects;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr unsigned blue = 0x0000FFu;
constexpr unsigned white = 0xFFFFFFu;

const std::string look = streamObject("/Type /XObject /Subtype /Form /BBox [0 0 10 10]", "0 0 1 rg 0 0 10 10 re f");

// A page with one annotation, drawn in blue from (20, 240) to (60, 280).
TestJob annotated(const std::string& entries) {
  return {.contents = {""},
          .page = "/Annots [5 0 R]",
          .objects = {look, "<< /Type /Annot /Rect [20 240 60 280] /AP << /N 4 0 R >> " + entries + " >>"}};
}

// The colour at the centre of the annotation in the mirrored page.
unsigned mirroredColour(const TestJob& job) {
  return pixel(render(printed(job.bytes(), {.mirrorImage = true})), 160, 40);
}

}  // namespace

TEST(Annotations, ThatPrintAreDrawnWithThePage) {
  EXPECT_EQ(mirroredColour(annotated("/Subtype /Stamp /F 4")), blue);
  EXPECT_EQ(mirroredColour(annotated("/Subtype /Widget /F 4")), blue);
}

TEST(Annotations, ThatPrintButAreNotSeenOnScreenAreDrawn) {
  EXPECT_EQ(mirroredColour(annotated("/Subtype /Stamp /F 36")), blue);
}

TEST(Annotations, ThatDoNotPrintAreNotDrawn) {
  EXPECT_EQ(mirroredColour(annotated("/Subtype /Stamp")), white) << "no flags";
  EXPECT_EQ(mirroredColour(annotated("/Subtype /Stamp /F 0")), white) << "no Print flag";
  EXPECT_EQ(mirroredColour(annotated("/Subtype /Stamp /F 6")), white) << "Hidden";
  EXPECT_EQ(mirroredColour(annotated("/Subtype /Popup /F 4")), white) << "pop-up";
}

TEST(Annotations, AreSeenNowhereElseAfterwards) {
  for (const char* flags : {"/F 4", "/F 0"}) {
    const std::string after =
        printed(annotated(std::string("/Subtype /Stamp ") + flags).bytes(), {.mirrorImage = true});
    EXPECT_EQ(pixel(render(after), 40, 40), white) << flags;
    EXPECT_THAT(plainText(after), HasSubstr(flags[3] == '4' ? "/F 6" : "/F 2"));
  }
}

TEST(Annotations, StayAsTheyAreWhenNothingIsDoneToThePage) {
  EXPECT_THAT(plainText(printed(annotated("/Subtype /Stamp /F 4").bytes(), {})), HasSubstr("/F 4"));
}

TEST(Annotations, AreDrawnInThePreviewWithAndWithoutEffects) {
  const TestFolder folder;
  for (const char* flags : {"/F 4", "/F 36"}) {
    write(folder / "in.pdf", annotated(std::string("/Subtype /Stamp ") + flags).bytes());
    Press::Job job(folder / "in.pdf");
    for (int time = 0; time < 2; ++time) {
      EXPECT_EQ(pixel(render(job.printPage(1, {})), 40, 40), blue);
      EXPECT_EQ(pixel(render(job.printPage(1, {.mirrorImage = true})), 160, 40), blue);
      EXPECT_EQ(pixel(render(job.printPage(1, {.mirrorImage = true})), 40, 40), white);
    }
  }
}

TEST(Annotations, ShowTheStateThatTheyAreIn) {
  TestJob job = annotated("/Subtype /Widget /F 4");
  job.objects[1] =
      "<< /Type /Annot /Subtype /Widget /F 4 /Rect [20 240 60 280] /AS /On /AP << /N << /On 4 0 R >> >> >>";
  EXPECT_EQ(mirroredColour(job), blue);
  job.objects[1] =
      "<< /Type /Annot /Subtype /Widget /F 4 /Rect [20 240 60 280] /AS /Off /AP << /N << /On 4 0 R >> >> >>";
  EXPECT_EQ(mirroredColour(job), white);
}

TEST(Annotations, WithAMatrixOnATurnedPageAreDrawnAsSeen) {
  const TestJob job{.boxes = "/MediaBox [0 0 200 300] /Rotate 90",
                    .page = "/Annots [5 0 R]",
                    .objects = {streamObject("/Type /XObject /Subtype /Form /BBox [0 0 40 20] /Matrix [0 1 -1 0 0 0]",
                                             "0 0 1 rg 0 0 40 20 re f 1 1 0 rg 0 0 10 5 re f"),
                                "<< /Type /Annot /Subtype /Widget /F 4 /Rect [100 100 120 140] /AP << /N 4 0 R >> >>"}};
  const Effects effects{.mirrorImage = true, .negativeImage = true, .rotate180 = true};
  const Press::Picture before = render(job.bytes());
  ASSERT_EQ(pixel(before, 135, 105), blue);
  EXPECT_EQ(difference(render(printed(job.bytes(), effects)), withEffects(before, effects)), 0);
}

TEST(Annotations, ThatStayUprightOnATurnedPageAreDrawnAsSeen) {
  TestJob job = annotated("/Subtype /Text /F 20");
  job.boxes = "/MediaBox [0 0 200 300] /Rotate 90";
  job.objects[0] =
      streamObject("/Type /XObject /Subtype /Form /BBox [0 0 10 10]", "0 0 1 rg 0 0 10 10 re f 1 1 0 rg 0 0 10 5 re f");
  const Press::Picture before = render(job.bytes(), Renderer::mupdf);
  const Press::Picture after = render(printed(job.bytes(), {.mirrorImage = true}), Renderer::mupdf);
  EXPECT_EQ(difference(after, withEffects(before, {.mirrorImage = true})), 0);
}

TEST(Annotations, OnALayerThatIsOffAreNotSeen) {
  TestJob job = annotated("/Subtype /Stamp /F 4 /OC 6 0 R");
  job.objects.push_back("<< /Type /OCG /Name (Layer) >>");
  job.catalog = "/OCProperties << /OCGs [6 0 R] /D << /OFF [6 0 R] >> >>";
  EXPECT_EQ(mirroredColour(job), white);
  const TestFolder folder;
  write(folder / "in.pdf", job.bytes());
  EXPECT_EQ(pixel(render(Press::printPage(folder / "in.pdf", 1, {})), 40, 40), white);
  job.catalog = "/OCProperties << /OCGs [6 0 R] /D << >> >>";
  EXPECT_EQ(mirroredColour(job), blue);
}

TEST(Annotations, FieldsKeepTheirValues) {
  TestJob job = annotated("/Subtype /Widget /F 4 /FT /Tx /T (Name) /V (Ada)");
  job.catalog = "/AcroForm << /Fields [5 0 R] >>";
  const std::string after = plainText(printed(job.bytes(), {.negativeImage = true}));
  EXPECT_THAT(after, HasSubstr("/V (Ada)"));
  EXPECT_THAT(after, HasSubstr("/AcroForm"));
}

TEST(Annotations, OfOneNameOnTwoPagesAreDrawnOnBoth) {
  TestJob job = annotated("/Subtype /Stamp /F 4");
  job.boxes = "";
  job.parent = "/MediaBox [0 0 200 300] /Kids [3 0 R 6 0 R] /Count 2";
  job.objects.push_back("<< /Type /Page /Parent 2 0 R /Annots [5 0 R] >>");
  std::string bytes = job.bytes();
  bytes.replace(bytes.find("/Count 1 /Kids [3 0 R]"), 22, std::string(22, ' '));
  const std::string after = printed(bytes, {.mirrorImage = true});
  const TestFolder folder;
  write(folder / "after.pdf", after);
  Press::Job reopened(folder / "after.pdf");
  ASSERT_EQ(reopened.pageCount(), 2);
  for (int page = 1; page <= 2; ++page) EXPECT_EQ(pixel(render(reopened.printPage(page, {})), 160, 40), blue) << page;
}

TEST(Annotations, ThatAreNonsenseDoNoHarm) {
  TestJob job = annotated("");
  job.page = "/Annots [null 5 0 R 7 (text) << >> 99 0 R << /AP 3 >> << /Subtype /Stamp /F 4 /AP << /N 4 0 R >> >>]";
  EXPECT_EQ(complaints(printed(job.bytes(), {.mirrorImage = true})), "");
  job.page = "/Annots 7";
  EXPECT_EQ(complaints(printed(job.bytes(), {.mirrorImage = true})), "");
}

TEST(Annotations, ThatAreLinksStayAlive) {
  TestJob job{.page = "/Annots [<< /Type /Annot /Subtype /Link /Rect [20 240 60 280] /Border [0 0 0] /F 4 "
                      "/A << /S /URI /URI (https://example.org) >> >>]"};
  const std::string after = plainText(printed(job.bytes(), {.mirrorImage = true}));
  EXPECT_THAT(after, AllOf(HasSubstr("example.org"), HasSubstr("/F 4"), Not(HasSubstr("/F 6"))));
}

TEST(Annotations, WithoutALookAreLeftToTheReader) {
  TestJob job{.contents = {""},
              .page =
                  "/Annots [<< /Type /Annot /Subtype /Square /Rect [20 240 60 280] /F 4 /C [0 0 1] /IC [0 0 1] >>]"};
  ASSERT_EQ(pixel(render(job.bytes()), 40, 40), blue);
  const TestFolder folder;
  write(folder / "in.pdf", job.bytes());
  Effects effects;
  effects.watermark.text = ".";
  effects.watermark.face = "DejaVu Sans";
  EXPECT_THAT(Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects), IsEmpty());
  EXPECT_EQ(pixel(render(read(folder / "out.pdf")), 40, 40), blue);
  effects.mirrorImage = true;
  EXPECT_THAT(Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects),
              ElementsAre(HasSubstr("without the effects")));
  EXPECT_EQ(pixel(render(read(folder / "out.pdf")), 40, 40), blue);
  effects.pagesOnSheet = 2;
  EXPECT_THAT(Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects), ElementsAre(HasSubstr("left out")));
}
