// kiln print in pipelines and at a terminal: standard input and output, page selection, progress, Ctrl-C.
#include "tests/script/process.h"
#include "tests/script/started.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

namespace {

using std::filesystem::path;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace fs = std::filesystem;

// A job that takes a while.
std::string longJob() {
  constexpr int pages = 15000;
  std::string kids;
  std::string objects;
  for (int page = 0; page < pages; ++page) {
    const std::string number = std::to_string(page + 4);
    kids += number + " 0 R ";
    objects += number + " 0 obj << /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 3 0 R >> endobj\n";
  }
  return "%PDF-1.4\n1 0 obj << /Type /Catalog /Pages 2 0 R >> endobj\n2 0 obj << /Type /Pages /Kids [" + kids +
         "] /Count " + std::to_string(pages) +
         " >> endobj\n3 0 obj << /Length 16 >> stream\n10 10 50 50 re f\nendstream endobj\n" + objects +
         "trailer << /Root 1 0 R >>\n";
}

class PrintStreams : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(runKiln({"sample", job.string()}).status, 0);
    for (const path& folder : {temporary, results}) fs::create_directories(folder);
  }

  std::vector<std::string> words(const std::string& in, const std::string& to) const {
    return {"print", in, to, "--set", "MirrorImage=MirrorImage", "--home", (testFolder() / "home").string()};
  }
  std::vector<std::string> environment() const { return {"TMPDIR=" + temporary.string()}; }

  // Starts printing a file with this standard input, and files for its messages.
  Started start(const path& in, const path& to, const path& input, const path& messages) const {
    std::vector<std::string> all = words(in, to);
    all.insert(all.begin(), KILN);
    return Started(all, input, testFolder() / "stdout", messages, environment());
  }

  const path job = testFolder() / "job.pdf";
  const path temporary = testFolder() / "tmp";
  const path results = testFolder() / "results";
  const path out = results / "out.pdf";
  const path err = testFolder() / "stderr";
};

TEST_F(PrintStreams, StandInForFiles) {
  ASSERT_EQ(runKiln(words(job, out)).status, 0);
  const auto both = runKiln(words("-", "-"), readFile(job), environment());
  EXPECT_EQ(both.status, 0);
  EXPECT_EQ(both.err, "");
  EXPECT_TRUE(samePages(both.out, readFile(out)));
  EXPECT_TRUE(samePages(runKiln(words(job, "-"), "", environment()).out, readFile(out)));
  fs::remove(out);
  EXPECT_EQ(runKiln(words("-", out), readFile(job), environment()).out, "");
  EXPECT_TRUE(samePages(readFile(out), both.out));
  EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(PrintStreams, AnswerThatCannotBeWrittenIsAFailure) {
  const std::string home = (testFolder() / "home").string();
  const std::vector<std::vector<std::string>> answering = {
      {"print", job.string(), "--dry-run", "--home", home}, {"ticket", "--home", home}, {"help"}, {"--version"}};
  for (std::vector<std::string> line : answering) {
    line.insert(line.begin(), KILN);
    EXPECT_EQ(runProcess(line, {}, {"/dev/null", "/dev/full", err}), 1) << line[1];
    EXPECT_THAT(readFile(err), StartsWith("kiln: Standard output cannot be written")) << line[1];
  }
}

TEST_F(PrintStreams, TellOfAJobThatIsNone) {
  const auto outcome = runKiln(words("-", "-"), "This is no PDF.", environment());
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, StartsWith("kiln: Standard input is not a PDF"));
  EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(PrintStreams, OutputIsNamedOrNotNeeded) {
  const auto outcome = runKiln({"print", job.string()});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("OUT.pdf"));
}

TEST_F(PrintStreams, OnlyChosenPagesArePrinted) {
  auto some = words(job, out);
  some.insert(some.end(), {"--pages", "4,2"});
  ASSERT_EQ(runKiln(some).status, 0);
  EXPECT_THAT(runKiln({"print", out.string(), "--dry-run"}).out, StartsWith("The job has 2 pages.\n"));
}

TEST_F(PrintStreams, ChosenPagesThatAreNoneAreASentence) {
  auto none = words(job, out);
  none.insert(none.end(), {"--pages", "9-"});
  const auto outcome = runKiln(none);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("job.pdf"));
  EXPECT_FALSE(fs::exists(out));
}

TEST_F(PrintStreams, InterruptionLeavesTheOutputAsItWas) {
  writeFile(job, longJob());
  writeFile(out, "as it was");
  Started printing = start(job, out, "/dev/null", err);
  const auto hasBegun = [this] { return std::distance(fs::directory_iterator(results), {}) == 2; };
  ASSERT_TRUE(waitUntil(hasBegun));
  printing.signal(SIGINT);
  EXPECT_EQ(printing.wait(), 130);
  EXPECT_EQ(readFile(err), "kiln: Printing was stopped; " + out.string() + " is as it was.\n");
  EXPECT_EQ(readFile(out), "as it was");
  EXPECT_FALSE(hasBegun());
}

TEST_F(PrintStreams, InterruptionWhileTheJobComesLeavesNothing) {
  const path pipe = testFolder() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int writer = open(pipe.c_str(), O_RDWR | O_CLOEXEC);
  for (const int wish : {SIGINT, SIGHUP}) {
    Started printing = start("-", out, pipe, err);
    EXPECT_TRUE(waitUntil([this] { return !fs::is_empty(temporary); }));
    printing.signal(wish);
    EXPECT_EQ(printing.wait(), 128 + wish);
    EXPECT_TRUE(fs::is_empty(temporary));
    EXPECT_TRUE(fs::is_empty(results));
  }
  close(writer);
}

TEST_F(PrintStreams, ProgressIsShownAtATerminalAloneAndWipedAway) {
  writeFile(job, longJob());
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  ASSERT_GE(terminal, 0);
  ASSERT_EQ(grantpt(terminal) + unlockpt(terminal), 0);
  {
    // However fast the machine is, the printing lasts long enough to be told of.
    Started printing = start(job, out, "/dev/null", ptsname(terminal));
    EXPECT_TRUE(waitUntil([this] { return !fs::is_empty(results); }));
    printing.signal(SIGSTOP);
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    printing.signal(SIGCONT);
    EXPECT_EQ(printing.wait(), 0);
  }
  std::string shown(1 << 16, '\0');
  shown.resize(static_cast<std::size_t>(std::max<ssize_t>(0, read(terminal, shown.data(), shown.size()))));
  close(terminal);
  EXPECT_THAT(shown, HasSubstr("\rPrinting: "));
  EXPECT_THAT(shown, HasSubstr(" of 15000 pages"));
  EXPECT_THAT(shown, EndsWith("\r\033[K"));

  EXPECT_EQ(start(job, out, "/dev/null", err).wait(), 0);
  EXPECT_EQ(readFile(err), "");
}

}  // namespace
