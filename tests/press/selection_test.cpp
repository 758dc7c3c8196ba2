// Printing some pages of a job.

#include "press/pdf/bytes.h"
#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using Press::Effects;
using Press::PageRule;
using testing::HasSubstr;
using testing::Not;

namespace {

// A job of ten pages, each as wide as ten times its number; everything else is inherited, and an outline refers to
// pages two and five.
std::string tenPages() {
  using Press::reference;
  Press::PdfBytes pdf;
  pdf.add("<< /Type /Catalog /Pages 2 0 R /Outlines 3 0 R /PageLabels << /Nums [0 << /S /r >>] >> >>");
  const int tree = pdf.reserve();
  const int outline = pdf.reserve();
  std::string kids;
  std::vector<int> pages;
  for (int number = 1; number <= 10; ++number) {
    const int content = pdf.addStream("", "1 0 0 rg 0 0 5 5 re f % content " + std::to_string(number));
    pages.push_back(pdf.add("<< /Type /Page /Parent 2 0 R /CropBox [0 0 " + std::to_string(10 * number) +
                            " 50] /Contents " + reference(content) + " >>"));
    kids += reference(pages.back()) + " ";
  }
  std::string titles;
  for (const int number : {2, 5})
    titles += reference(pdf.add("<< /Title (To page) /Parent 3 0 R /Dest [" +
                                reference(pages[static_cast<std::size_t>(number - 1)]) + " /Fit] >>")) +
              " ";
  pdf.set(outline, "<< /Type /Outlines /Kids [" + titles + "] >>");
  pdf.set(tree, "<< /Type /Pages /Count 10 /MediaBox [0 0 200 50] /Rotate 90 /Resources << /ProcSet [/PDF] >> /Kids [" +
                    kids + "] >>");
  return pdf.finish(1);
}

class Selection : public testing::Test {
 protected:
  Selection() { write(folder / "in.pdf", tenPages()); }

  // The heights of the printed pages, which are rotated.
  std::vector<int> print(const char* pages, const Effects& effects = {}) {
    Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects, {}, PageRule(pages));
    EXPECT_EQ(complaints(read(folder / "out.pdf")), "");
    Press::Job job(folder / "out.pdf");
    std::vector<int> heights;
    for (int page = 1; page <= job.pageCount(); ++page) heights.push_back(render(job.printPage(page, {})).height);
    return heights;
  }

  const TestFolder folder;
};

}  // namespace

TEST_F(Selection, PrintsTheNamedPagesInTheOrderOfTheJob) {
  EXPECT_THAT(print("9-,2,4-5"), testing::ElementsAre(20, 40, 50, 90, 100));
  EXPECT_THAT(print("Odd"), testing::ElementsAre(10, 30, 50, 70, 90));
  EXPECT_EQ(print("All").size(), 10u);
}

TEST_F(Selection, LeavesNothingOfTheOthersInTheFile) {
  print("5");
  const std::string text = plainText(read(folder / "out.pdf"));
  EXPECT_THAT(text, HasSubstr("content 5"));
  for (const char* gone : {"content 2", "content 4", "content 6"}) EXPECT_THAT(text, Not(HasSubstr(gone)));
  EXPECT_THAT(text, HasSubstr("(To page)"));
}

TEST_F(Selection, KeepsThePagesLabels) {
  std::string job = tenPages();
  job.replace(job.find("[0 << /S /r >>]"), 15, "[0<</S/r>>4<</S/D/St 9>>]");
  write(folder / "in.pdf", job);
  print("2-3,5-6,9");
  const std::string labels = run("qpdf --json --json-key=pagelabels '" + (folder / "out.pdf").string() + "'").output;
  const auto label = [](int index, const std::string& style, int first) {
    return testing::HasSubstr("\"index\": " + std::to_string(index) + ",\n      \"label\": {\n        \"/S\": \"" +
                              style + "\",\n        \"/St\": " + std::to_string(first));
  };
  EXPECT_THAT(labels, testing::AllOf(label(0, "/r", 2), label(2, "/D", 9), label(4, "/D", 13)));
}

TEST_F(Selection, DoesWithoutLabelsThatCannotBeRead) {
  for (const char* labels :
       {"<< /Kids [3 0 R] >>", "<< /Nums [7] >>", "<< /Nums 7 >>", "7", "<< /Kids [2 0 R 2 0 R] >>"}) {
    std::string job = tenPages();
    job.replace(job.find("<< /Nums [0 << /S /r >>] >>"), 27, labels);
    write(folder / "in.pdf", job);
    EXPECT_THAT(print("5"), testing::ElementsAre(50)) << labels;
  }
}

TEST_F(Selection, IsWhatOverlaysAndTheFirstPageAreCountedIn) {
  write(folder / "form.opa", TestJob{.boxes = "/MediaBox [0 0 50 100]", .contents = {"0 g 0 0 50 100 re f"}}.bytes());
  Effects effects;
  effects.overlays = {{folder / "form.opa", PageRule("2")}};
  Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects, {}, PageRule("8-10"));
  Press::Job job(folder / "out.pdf");
  EXPECT_EQ(pixel(render(job.printPage(1, {})), 25, 40), 0xFFFFFFu);
  EXPECT_EQ(pixel(render(job.printPage(2, {})), 25, 45), 0x000000u);
}

TEST_F(Selection, OfNoPageIsRefused) {
  try {
    print("11-");
    ADD_FAILURE();
  } catch (const Press::Error& error) {
    EXPECT_THAT(error.what(), HasSubstr("in.pdf\" has none of the chosen pages: choose from its 10."));
  }
  EXPECT_FALSE(std::filesystem::exists(folder / "out.pdf"));
}
