#include "press/job/sample.h"
#include "press/pdf/bytes.h"
#include "tests/press/rendering.h"
#include "tests/press/small_disk.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using Press::Effects;
using Press::printPdf;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const Effects everything{.mirrorImage = true, .negativeImage = true, .rotate180 = true, .rotate180ForA3Ledger = true};

// The error message of printing `in` to `out`.
std::string failure(const fs::path& in, const fs::path& out) {
  try {
    printPdf(in, out, everything);
  } catch (const Press::Error& error) {
    return error.what();
  }
  return "printed";
}

// Converts a job with qpdf; returns its exit status.
int converted(const fs::path& in, const fs::path& out, const std::string& options) {
  return run("qpdf " + options + " '" + in.string() + "' '" + out.string() + "'").status;
}

// A job of many text pages with shared resources.
std::string longJob(int count, const std::string& page = "/Resources 4 0 R") {
  using Press::reference;
  Press::PdfBytes pdf;
  pdf.add("<< /Type /Catalog /Pages 2 0 R >>");
  const int pages = pdf.reserve();
  const int content = pdf.addStream("", "q 1 0 0 rg 20 20 50 50 re f Q");
  pdf.add("<< /ProcSet [/PDF] >>");
  std::string kids;
  for (int index = 0; index < count; ++index)
    kids += reference(pdf.add("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents " + reference(content) +
                              " " + page + " >>")) +
            " ";
  pdf.set(pages, "<< /Type /Pages /Count " + std::to_string(count) + " /Kids [" + kids + "] >>");
  return pdf.finish(1);
}

// Runs as an unprivileged user, if the tests run as root.
class AsOrdinaryUser {
 public:
  AsOrdinaryUser() { changed = ::geteuid() == 0 && ::setegid(65534) == 0 && ::seteuid(65534) == 0; }
  ~AsOrdinaryUser() {
    if (changed && (::seteuid(0) != 0 || ::setegid(0) != 0)) std::abort();
  }

 private:
  bool changed;
};

// A folder with a valid job, and an old printed file that must survive failures.
class Printing : public testing::Test {
 protected:
  Printing() {
    write(folder / "job.pdf", Press::samplePdf());
    write(folder / "out.pdf", "old");
  }

  void expectOldFileAlone() {
    EXPECT_TRUE(read(folder / "out.pdf") == "old");
    for (const std::string& name : folder.names()) EXPECT_THAT(name, Not(HasSubstr("tmp")));
  }

  const TestFolder folder;
};

}  // namespace

TEST_F(Printing, WithoutEffectsKeepsTheLook) {
  const std::string job = TestJob{}.bytes();
  EXPECT_EQ(difference(render(printed(job, {})), render(job)), 0);
}

TEST_F(Printing, ReplacesTheOldFile) {
  printPdf(folder / "job.pdf", folder / "out.pdf", everything);
  EXPECT_EQ(complaints(read(folder / "out.pdf")), "");
  EXPECT_THAT(folder.names(), ElementsAre("job.pdf", "out.pdf"));
}

TEST_F(Printing, SaysThatTheJobIsMissing) {
  EXPECT_THAT(failure(folder / "gone.pdf", folder / "out.pdf"),
              AllOf(StartsWith("\"" + (folder / "gone.pdf").string() + "\" does not exist"), HasSubstr("check")));
  expectOldFileAlone();
}

TEST_F(Printing, SaysThatTheJobIsAFolder) {
  EXPECT_THAT(failure(folder.path, folder / "out.pdf"), HasSubstr("is not an ordinary file"));
  expectOldFileAlone();
}

TEST_F(Printing, SaysThatTheJobMayNotBeRead) {
  fs::permissions(folder / "job.pdf", fs::perms::none);
  fs::permissions(folder.path, fs::perms::all);
  const AsOrdinaryUser user;
  EXPECT_THAT(failure(folder / "job.pdf", folder / "new.pdf"), HasSubstr("job.pdf\" cannot be read"));
}

TEST_F(Printing, SaysThatTheJobIsNoPdf) {
  for (const char* bytes : {"", "\x89PNG\r\n", "plain text"}) {
    write(folder / "text.txt", bytes);
    EXPECT_THAT(failure(folder / "text.txt", folder / "out.pdf"), HasSubstr("text.txt\" is not a PDF file"));
    expectOldFileAlone();
  }
}

TEST_F(Printing, SaysThatTheJobIsDamaged) {
  write(folder / "broken.pdf", "%PDF-1.7\nnothing else");
  EXPECT_THAT(failure(folder / "broken.pdf", folder / "out.pdf"), HasSubstr("broken.pdf\" is damaged"));
  expectOldFileAlone();
}

TEST_F(Printing, SaysThatTheJobHasNoPages) {
  write(folder / "empty.pdf", longJob(0));
  EXPECT_THAT(failure(folder / "empty.pdf", folder / "out.pdf"), HasSubstr("empty.pdf\" has no pages"));
  expectOldFileAlone();
}

TEST_F(Printing, LeavesOutNoPageThatCannotBeRead) {
  std::string job = longJob(3);
  job.replace(job.rfind("<< /Type /Page /"), 4, ">>>>");  // the last page
  write(folder / "broken.pdf", job);
  EXPECT_THAT(failure(folder / "broken.pdf", folder / "out.pdf"),
              HasSubstr("broken.pdf\" is damaged (page 3 cannot be read)"));
  expectOldFileAlone();
}

TEST_F(Printing, PassesOverThePlaceOfADeletedPage) {
  std::string job = longJob(3);
  job.replace(job.find("/Kids [5 0 R"), 12, "/Kids [null ");
  write(folder / "gap.pdf", job);
  EXPECT_EQ(Press::Job(folder / "gap.pdf").pageCount(), 2);
}

TEST_F(Printing, RefusesJobsThatNeedAPassword) {
  const fs::path locked = folder / "locked.pdf";
  ASSERT_EQ(converted(folder / "job.pdf", locked, "--encrypt secret owner 256 --"), 0);
  EXPECT_THAT(failure(locked, folder / "out.pdf"),
              AllOf(HasSubstr("locked.pdf\" needs a password"), HasSubstr("save a copy without protection")));
  expectOldFileAlone();
}

TEST_F(Printing, RefusesJobsThatMayNotBePrinted) {
  const fs::path locked = folder / "locked.pdf";
  ASSERT_EQ(converted(folder / "job.pdf", locked, "--encrypt '' owner 256 --print=none --"), 0);
  EXPECT_THAT(failure(locked, folder / "out.pdf"), HasSubstr("locked.pdf\" may not be printed"));
  expectOldFileAlone();
}

TEST_F(Printing, KeepsTheProtectionOfJobsThatOpenWithoutAPassword) {
  for (const char* bits : {"40", "128", "256"}) {
    const std::string weak = bits == std::string("256") ? "" : "--allow-weak-crypto ";
    const fs::path locked = folder / "locked.pdf";
    ASSERT_EQ(converted(folder / "job.pdf", locked, weak + "--encrypt '' owner " + bits + " --"), 0);
    EXPECT_EQ(failure(locked, folder / "out.pdf"), "printed");
    EXPECT_EQ(run("qpdf --is-encrypted '" + (folder / "out.pdf").string() + "'").status, 0);
    EXPECT_EQ(difference(render(read(folder / "out.pdf")), render(printed(Press::samplePdf(), everything))), 0);
    EXPECT_EQ(difference(render(Press::printPage(locked, 1, everything)), render(read(folder / "out.pdf"))), 0);
  }
}

TEST_F(Printing, KeepsAProtectionThatDoesNotTellTheLengthOfItsKey) {
  const fs::path locked = folder / "locked.pdf";
  ASSERT_EQ(converted(folder / "job.pdf", locked, "--allow-weak-crypto --encrypt '' owner 128 --use-aes=y --"), 0);
  const std::string ordinary = read(locked);
  const std::string told = "/Standard /Length 128 ";
  ASSERT_NE(ordinary.find(told), std::string::npos);
  for (const char* other : {"/Standard /Strength 7 ", "/Standard /Length 16  "}) {
    SCOPED_TRACE(other);
    write(locked, std::string(ordinary).replace(ordinary.find(told), told.size(), other));
    EXPECT_EQ(failure(locked, folder / "out.pdf"), "printed");
    EXPECT_EQ(complaints(read(folder / "out.pdf")), "");
    EXPECT_EQ(difference(render(read(folder / "out.pdf")), render(printed(Press::samplePdf(), everything))), 0);
  }
}

TEST_F(Printing, RefusesToPrintIntoTheJobItself) {
  fs::create_symlink("job.pdf", folder / "link.pdf");
  fs::create_hard_link(folder / "job.pdf", folder / "same.pdf");
  for (const char* name : {"job.pdf", "link.pdf", "same.pdf", "./job.pdf"})
    EXPECT_THAT(failure(folder / "job.pdf", folder / name), HasSubstr("is the job itself")) << name;
  EXPECT_EQ(read(folder / "job.pdf"), Press::samplePdf());
}

TEST_F(Printing, SaysThatTheOutputFolderIsMissing) {
  EXPECT_THAT(failure(folder / "job.pdf", folder / "missing/out.pdf"),
              AllOf(HasSubstr("missing/out.pdf\" cannot be written (No such file"), HasSubstr("choose a folder")));
  expectOldFileAlone();
}

TEST_F(Printing, SaysThatTheOutputIsAFolder) {
  fs::create_directory(folder / "there");
  EXPECT_THAT(failure(folder / "job.pdf", folder / "there"), HasSubstr("there\" cannot be written (Is a directory"));
  EXPECT_TRUE(fs::is_empty(folder / "there"));
}

TEST_F(Printing, SaysThatTheOutputFolderMayNotBeWritten) {
  fs::permissions(folder.path, fs::perms{0555});  // also for the group, which root's processes may keep
  {
    const AsOrdinaryUser user;
    EXPECT_THAT(failure(folder / "job.pdf", folder / "new.pdf"),
                HasSubstr("new.pdf\" cannot be written (Permission denied"));
  }
  expectOldFileAlone();
}

TEST_F(Printing, SaysThatTheOldFileMayNotBeWritten) {
  fs::permissions(folder.path, fs::perms::all);
  fs::permissions(folder / "out.pdf", fs::perms::owner_read | fs::perms::others_read);
  {
    const AsOrdinaryUser user;
    EXPECT_THAT(failure(folder / "job.pdf", folder / "out.pdf"), HasSubstr("out.pdf\" cannot be written"));
  }
  expectOldFileAlone();
}

TEST_F(Printing, SaysThatTheDiskIsFullWhereverThatHappens) {
  write(folder / "long.pdf", longJob(5000));
  for (const rlim_t room : {0u, 1000u, 300'000u}) {
    std::string sentence;
    {
      const SmallDisk disk(room);
      sentence = failure(folder / "long.pdf", folder / "out.pdf");
    }
    EXPECT_THAT(sentence, HasSubstr("out.pdf\" cannot be written (File too large"));
    expectOldFileAlone();
  }
}

TEST_F(Printing, CountsPagesForTheProgressUpToTheLast) {
  write(folder / "long.pdf", longJob(100));
  std::vector<int> seen;
  printPdf(folder / "long.pdf", folder / "out.pdf", everything, [&](int done, int total) {
    EXPECT_EQ(total, 100);
    seen.push_back(done);
    return true;
  });
  EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
  EXPECT_GT(seen.size(), 100u);
  EXPECT_EQ(seen.back(), 100);
}

TEST_F(Printing, StopsWheneverTheProgressSaysSo) {
  write(folder / "long.pdf", longJob(100));
  for (int stop = 0; stop <= 100; stop += 10) {
    EXPECT_THROW(
        printPdf(folder / "long.pdf", folder / "out.pdf", everything, [&](int done, int) { return done < stop; }),
        Press::Stopped)
        << stop;
    expectOldFileAlone();
  }
}

TEST_F(Printing, KeepsWhatBelongsToTheDocument) {
  TestJob job;
  job.catalog = "/Outlines 4 0 R /Metadata 6 0 R /StructTreeRoot << /Type /StructTreeRoot /K [] >> /Lang (en)";
  job.page = "/Tabs /S";
  job.objects = {"<< /Type /Outlines /First 5 0 R /Last 5 0 R /Count 1 >>",
                 "<< /Title (Chapter) /Parent 4 0 R /Dest [3 0 R /Fit] >>",
                 streamObject("/Type /Metadata /Subtype /XML", "<x:xmpmeta/>")};
  const std::string text = plainText(printed(job.bytes(), everything));
  for (const char* kept : {"/Title (Chapter)", "<x:xmpmeta/>", "/StructTreeRoot", "/Lang (en)", "/Tabs /S"})
    EXPECT_THAT(text, HasSubstr(kept));
}

TEST_F(Printing, LeavesBoxesRotationAndContentAsTheyAre) {
  const TestJob job{.boxes = "/MediaBox [0 0 200 300] /CropBox [10 5 160 280] /TrimBox [20 20 100 100] /Rotate 90"};
  const std::string text = plainText(printed(job.bytes(), everything));
  EXPECT_THAT(text, HasSubstr(marks));
  EXPECT_THAT(text, HasSubstr("/Rotate 90"));
  EXPECT_THAT(text, HasSubstr("/CropBox [\n    10\n    5\n    160\n    280\n  ]"));
  EXPECT_THAT(text, HasSubstr("/TrimBox [\n    20\n    20\n    100\n    100\n  ]"));
}

TEST_F(Printing, DoesNotEncodeAnythingAnew) {
  TestJob job{.contents = {}};
  const std::string encoded = "312030203020726720322032203530203530207265206620>";
  job.page = "/Contents 4 0 R";
  job.objects = {streamObject("/Filter /ASCIIHexDecode", encoded)};
  EXPECT_THAT(printed(job.bytes(), everything), HasSubstr(encoded));
  job.objects[0] = streamObject("/Filter /ASCIIHexDecode", "51" + encoded);  // starts with an unmatched Q
  EXPECT_THAT(printed(job.bytes(), everything), HasSubstr("51" + encoded));
}

TEST_F(Printing, StoresWhatPagesShareOnce) {
  constexpr std::size_t count = 1000;
  for (const char* resources : {"/Resources 4 0 R", "/Resources << /ProcSet [/PDF] >>"}) {
    const std::string job = longJob(count, resources);
    const std::size_t plain = printed(job, {}).size();
    EXPECT_LT(printed(job, {.mirrorImage = true}).size(), plain + 30 * count) << resources;
    EXPECT_LT(printed(job, everything).size(), plain + 100 * count) << resources;
  }
}

TEST_F(Printing, TwiceOverGivesThePageBack) {
  const std::string job = TestJob{}.bytes();
  const std::string twice = printed(printed(job, everything), everything);
  EXPECT_LE(difference(render(twice), render(job)), 1);
}

TEST_F(Printing, WritesAVersionThatKnowsTransparency) {
  std::string job = TestJob{}.bytes();
  job.replace(0, 8, "%PDF-1.2");
  EXPECT_THAT(printed(job, {.negativeImage = true}), StartsWith("%PDF-1.4"));
}

TEST_F(Printing, TakesNamesInEveryScript) {
  fs::rename(folder / "job.pdf", folder / "ジョブ ä.pdf");
  printPdf(folder / "ジョブ ä.pdf", folder / "印刷.pdf", everything);
  EXPECT_TRUE(fs::exists(folder / "印刷.pdf"));
}

TEST_F(Printing, AJobStaysOpenForManyPages) {
  Press::Job job(folder / "job.pdf");
  const std::string first = job.printPage(2, everything);
  job.printPage(4, {.mirrorImage = true});
  job.printPage(1, {});
  EXPECT_EQ(difference(render(job.printPage(2, everything)), render(first)), 0);
}

TEST_F(Printing, PagesThatAreNotThereAreRefused) {
  Press::Job job(folder / "job.pdf");
  EXPECT_EQ(job.pageCount(), 4);
  EXPECT_THROW(job.printPage(0, {}), Press::Error);
  EXPECT_THROW(job.printPage(5, {}), Press::Error);
}

TEST_F(Printing, APageForThePreviewHoldsNoOtherPage) {
  write(folder / "long.pdf", longJob(1000));
  EXPECT_LT(Press::printPage(folder / "long.pdf", 7, everything).size(), 3000u);
}
