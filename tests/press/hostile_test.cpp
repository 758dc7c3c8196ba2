// Files made to harm: each has to end in a printed file or in a sentence, at a cost that grows with the file at most.

#include "press/job/sample.h"
#include "press/pdf/bytes.h"
#include "tests/press/test_job.h"
#include "tests/support/growth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>

using Press::Effects;
using Press::PdfBytes;
using Press::reference;

namespace {

Effects everything(int pagesOnSheet) {
  Effects effects{.mirrorImage = true, .negativeImage = true, .rotate180 = true, .rotate180ForA3Ledger = true};
  effects.watermark.text = "Draft";
  effects.watermark.face = "DejaVu Sans";
  effects.pagesOnSheet = pagesOnSheet;
  return effects;
}

enum class Outcome { printed, refused };

// Prints the job, each of its first pages for the preview, and the job with several pages on a sheet. Several pages on
// a sheet may be refused where the pages alone are not.
Outcome survive(const std::string& job) {
  const TestFolder folder;
  write(folder / "in.pdf", job);
  Outcome outcome = Outcome::refused;
  try {
    Press::printPdf(folder / "in.pdf", folder / "out.pdf", everything(1));
    Press::Job preview(folder / "in.pdf");
    for (int page = 1; page <= std::min(preview.pageCount(), 3); ++page) preview.printPage(page, everything(1));
    outcome = Outcome::printed;
    Press::printPdf(folder / "in.pdf", folder / "sheets.pdf", everything(2));
  } catch (const Press::Error&) {
  }
  return outcome;
}

// Whether jobs that `make` makes of so many pieces, and of ten times as many, are printed at costs in that proportion.
testing::AssertionResult survivesLinearly(int pieces, const std::function<std::string(int)>& make) {
  return Testing::growsLinearly(
      pieces, [&](int count) { return [job = make(count)] { EXPECT_EQ(survive(job), Outcome::printed); }; });
}

// A job whose page tree is made by hand.
std::string tree(const std::vector<std::string>& nodes) {
  PdfBytes pdf;
  pdf.add("<< /Type /Catalog /Pages 2 0 R >>");
  for (const std::string& node : nodes) pdf.add(node);
  return pdf.finish(1);
}

}  // namespace

TEST(Hostile, PageTreeThatLoops) {
  EXPECT_EQ(survive(tree({"<< /Type /Pages /Kids [2 0 R] >>"})), Outcome::refused);
  EXPECT_EQ(survive(tree({"<< /Type /Pages /Kids [3 0 R] >>", "<< /Type /Pages /Kids [2 0 R 4 0 R] >>",
                          "<< /Type /Page /MediaBox [0 0 9 9] >>"})),
            Outcome::printed);
}

TEST(Hostile, PageTreeThatNamesEachNodeTwice) {
  std::vector<std::string> nodes;
  for (int level = 0; level < 60; ++level)
    nodes.push_back("<< /Type /Pages /Kids [" + reference(level + 3) + " " + reference(level + 3) + "] >>");
  nodes.push_back("<< /Type /Page /MediaBox [0 0 9 9] >>");
  EXPECT_EQ(survive(tree(nodes)), Outcome::printed);
}

std::string deepTree(int depth) {
  std::vector<std::string> nodes;
  for (int level = 0; level < depth; ++level) nodes.push_back("<< /Kids [" + reference(level + 3) + "] >>");
  nodes.push_back("<< /Type /Page /MediaBox [0 0 9 9] >>");
  return tree(nodes);
}

TEST(Hostile, PageTreeOfGreatDepth) { EXPECT_TRUE(survivesLinearly(4'000, deepTree)); }

TEST(Hostile, PageTreeOfGreatDepthWithFieldsToDraw) {
  EXPECT_TRUE(survivesLinearly(4'000, [](int depth) {
    std::string job = deepTree(depth);
    const std::string catalog = "<< /Type /Catalog /Pages 2 0 R >>";
    job.replace(job.find(catalog), catalog.size(), "<< /Pages 2 0 R /AcroForm << /NeedAppearances true >> >>");
    return job;
  }));
}

TEST(Hostile, VeryManyKids) {
  EXPECT_TRUE(survivesLinearly(2'500, [](int count) {
    std::string kids;
    for (int kid = 0; kid < count; ++kid) kids += "3 0 R ";
    return tree({"<< /Type /Pages /Kids [" + kids + "] >>", "<< /Type /Page /MediaBox [0 0 9 9] >>"});
  }));
}

TEST(Hostile, PagesThatAreNoPages) {
  for (const char* kids : {"[]", "[7]", "[(text)]", "[null]", "[[]]", "[3 0 R]", "[99 0 R]"})
    EXPECT_EQ(survive(tree({std::string("<< /Type /Pages /Kids ") + kids + " >>", "42"})), Outcome::refused) << kids;
  EXPECT_EQ(survive(tree({"[1 2 3]"})), Outcome::refused);
  EXPECT_EQ(survive(tree({"<< /Kids [<< /Type /Page >>] >>"})), Outcome::printed);
}

TEST(Hostile, EntriesOfTheWrongKind) {
  for (const char* value : {"7", "null", "(text)", "/Name", "[]", "[[[[]]]]", "<< >>", "true", "99 0 R", "3 0 R"}) {
    TestJob job{.boxes = "", .contents = {}, .hasResources = false};
    for (const char* key :
         {"/MediaBox ", "/CropBox ", "/Rotate ", "/UserUnit ", "/Contents ", "/Annots ", "/Resources ", "/Group "})
      job.page += std::string(key) + value + " ";
    EXPECT_EQ(survive(job.bytes()), Outcome::printed) << value;
    job.page = std::string("/Resources << /ExtGState ") + value + " /XObject " + value + " /Pattern " + value + " >>";
    EXPECT_EQ(survive(job.bytes()), Outcome::printed) << value;
  }
}

TEST(Hostile, AbsurdNumbers) {
  for (const char* value : {"1e308", "-99999999999999999999999999999999", "9223372036854775807", "-9223372036854775808",
                            "0.00000000000000000000000000001", "--5", "+-.", "1.2.3"}) {
    const std::string number = value;
    const std::string box = "[" + number + " 0 " + number + " " + number + "]";
    TestJob job{.boxes = "/MediaBox " + box + " /CropBox " + box + " /Rotate " + number + " /UserUnit " + number,
                .page = "/Annots [<< /Subtype /Stamp /F " + number + " /Rect " + box + " /AP << /N 4 0 R >> >>]",
                .objects = {streamObject(
                    "/Subtype /Form /BBox " + box + " /Matrix [" + number + " 0 0 " + number + " 0 0]", "")}};
    survive(job.bytes());
  }
}

TEST(Hostile, BracketsOfGreatDepth) {
  const std::string deep(1'000'000, '[');
  EXPECT_EQ(survive(TestJob{.contents = {deep, std::string(1'000'000, '(')}}.bytes()), Outcome::printed);
  survive(TestJob{.page = "/Deep " + deep}.bytes());
}

TEST(Hostile, ObjectsInALongChain) {
  EXPECT_TRUE(survivesLinearly(5'000, [](int links) {
    TestJob job{.page = "/Annots [4 0 R]"};
    for (int link = 0; link < links; ++link) job.objects.push_back("<< /Next " + reference(5 + link) + " >>");
    job.objects.push_back("null");
    return job.bytes();
  }));
}

TEST(Hostile, OneStreamNamedVeryOften) {
  EXPECT_TRUE(survivesLinearly(20'000, [](int times) {
    std::string names;
    for (int time = 0; time < times; ++time) names += "4 0 R ";
    return TestJob{
        .contents = {}, .page = "/Contents [" + names + "]", .objects = {streamObject("", std::string(100'000, ' '))}}
        .bytes();
  }));
}

// Just more than a job may have when they are counted on each page.
TEST(Hostile, AnnotationsThatManyPagesShare) {
  constexpr int side = 2'010;
  PdfBytes pdf;
  pdf.add("<< /Type /Catalog /Pages 2 0 R >>");
  const int pages = pdf.reserve();
  std::string annotations;
  for (int annotation = 0; annotation < side; ++annotation)
    annotations += "<< /Subtype /Stamp /F 4 /Rect [0 0 9 9] >> ";
  pdf.add("[" + annotations + "]");
  std::string kids;
  for (int page = 0; page < side; ++page)
    kids += reference(pdf.add("<< /Type /Page /Annots 3 0 R /MediaBox [0 0 9 9] >>")) + " ";
  pdf.set(pages, "<< /Type /Pages /Kids [" + kids + "] >>");
  EXPECT_EQ(survive(pdf.finish(1)), Outcome::refused);
}

TEST(Hostile, FilesCutShort) {
  const std::string sample = Press::samplePdf();
  for (std::size_t size = 0; size < sample.size(); size += 331) survive(sample.substr(0, size));
}

TEST(Hostile, FilesWithWrongBytes) {
  const std::string sample = Press::samplePdf();
  std::mt19937 random(1);
  for (int round = 0; round < 150; ++round) {
    std::string bytes = sample;
    for (int change = 0; change < 40; ++change) bytes[random() % bytes.size()] = static_cast<char>(random());
    survive(bytes);
  }
}
