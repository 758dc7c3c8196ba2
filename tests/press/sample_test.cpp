#include "press/job/sample.h"
#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

#include <gtest/gtest.h>

TEST(Sample, IsASoundPdfOfFourPages) {
  const TestFolder folder;
  write(folder / "sample.pdf", Press::samplePdf());
  EXPECT_EQ(complaints(Press::samplePdf()), "");
  EXPECT_EQ(Press::Job(folder / "sample.pdf").pageCount(), 4);
}

TEST(Sample, IsAlwaysTheSame) { EXPECT_EQ(Press::samplePdf(), Press::samplePdf()); }

TEST(Sample, ShowsEachEffect) {
  const TestFolder folder;
  write(folder / "sample.pdf", Press::samplePdf());
  Press::Job job(folder / "sample.pdf");
  for (int page = 1; page <= 4; ++page) EXPECT_TRUE(isTelling(render(job.printPage(page, {})))) << page;
}

TEST(Sample, ItsThirdPageIsTheOneForA3) {
  const TestFolder folder;
  write(folder / "sample.pdf", Press::samplePdf());
  Press::Job job(folder / "sample.pdf");
  for (int page = 1; page <= 4; ++page) {
    const bool turned =
        difference(render(job.printPage(page, {})), render(job.printPage(page, {.rotate180ForA3Ledger = true}))) > 0;
    EXPECT_EQ(turned, page == 3) << page;
  }
}
