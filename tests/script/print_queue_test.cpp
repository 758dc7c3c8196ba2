// The filter in a queue of a real print scheduler.
#include "tests/script/scheduler.h"

#include <gmock/gmock.h>

#include <csignal>
#include <regex>

namespace {

using std::filesystem::path;
using testing::HasSubstr;

namespace fs = std::filesystem;

// A queue as docs/print-queue.md has it: kiln goes before the scheduler's own page filter.
constexpr const char* beforeThePageFilter = "*cupsFilter2: \"application/vnd.cups-pdf application/pdf 0 -\"\n"
                                            "*cupsPreFilter: \"application/pdf 0 kiln\"\n";

// A queue on which kiln is the only filter.
constexpr const char* alone = "*cupsFilter2: \"application/pdf application/pdf 0 kiln\"\n";

// The brightness of the paper in the middle of the first page's left margin, from 0 to 255.
int paperOf(const std::string& pdf) {
  const path file = testFolder() / "picture.pdf";
  writeFile(file, pdf);
  const std::string picture = runProgram("pdftoppm", {"-r", "20", "-f", "1", "-l", "1", "-gray", file.string()}).out;
  std::smatch head;
  if (!std::regex_search(picture, head, std::regex("^P5\\s+(\\d+)\\s+(\\d+)\\s+255\\s"))) return -1;
  const std::size_t width = std::stoul(head[1]);
  const std::size_t height = std::stoul(head[2]);
  const auto first = static_cast<std::size_t>(head.length());
  return static_cast<unsigned char>(picture.at(first + height / 2 * width + width / 30));
}

class PrintQueue : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(runKiln({"sample", job.string()}).status, 0); }

  void writeTicket(const std::string& setting) {
    writeFile(scheduler.tickets() / "office.xml", runKiln({"ticket", "--set", setting, "--home", home}).out);
  }

  std::string printedByCommand(const std::vector<std::string>& settings) {
    const path out = testFolder() / "printed.pdf";
    std::vector<std::string> words = {"print", job.string(), out.string(), "--home", home};
    for (const std::string& setting : settings) words.insert(words.end(), {"--set", setting});
    EXPECT_EQ(runKiln(words).status, 0);
    return readFile(out);
  }

  const std::string home = (testFolder() / "home").string();
  const path job = testFolder() / "job.pdf";
  Scheduler scheduler{testFolder() / "scheduler"};
};

TEST_F(PrintQueue, PrintsTheJobsOfAnyProgramWithItsTicket) {
  scheduler.addQueue("office", beforeThePageFilter);
  scheduler.send("office", job);
  EXPECT_GT(paperOf(scheduler.printed("office")), 250) << scheduler.log();
  writeTicket("NegativeImage=Negative");
  scheduler.send("office", job);
  EXPECT_LT(paperOf(scheduler.printed("office")), 5) << scheduler.log();
}

TEST_F(PrintQueue, PrintsExactlyAsTheCommandDoes) {
  scheduler.addQueue("office", alone);
  writeTicket("NegativeImage=Negative");
  scheduler.send("office", job);
  EXPECT_TRUE(samePages(scheduler.printed("office"), printedByCommand({"NegativeImage=Negative"}))) << scheduler.log();
}

TEST_F(PrintQueue, LetsAJobChooseWhatIsAllowed) {
  scheduler.installKiln("--allow MirrorImage");
  scheduler.addQueue("office", alone);
  scheduler.send("office", job, {"-t", "A 'title' kiln-Rotate180=Rotate180", "-o", "kiln-MirrorImage=MirrorImage"});
  EXPECT_TRUE(samePages(scheduler.printed("office"), printedByCommand({"MirrorImage=MirrorImage"}))) << scheduler.log();
}

TEST_F(PrintQueue, LetsTheAdministratorSetTheDefaultOfWhatIsAllowed) {
  scheduler.installKiln("--allow MirrorImage");
  scheduler.addQueue("office", alone);
  scheduler.client("lpadmin", {"-p", "office", "-o", "kiln-MirrorImage-default=MirrorImage"});
  scheduler.send("office", job);
  EXPECT_TRUE(samePages(scheduler.printed("office"), printedByCommand({"MirrorImage=MirrorImage"}))) << scheduler.log();
}

TEST_F(PrintQueue, StopsAJobThatItCannotPrintAndPrintsTheNext) {
  scheduler.addQueue("office", alone);
  writeTicket("NegativeImage=Negative");
  const path damaged = testFolder() / "damaged.pdf";
  writeFile(damaged, "%PDF-1.4\nThat is all.");
  scheduler.send("office", damaged, {"-t", "damaged"});
  EXPECT_TRUE(waitUntil([&] { return scheduler.log().find("Job stopped due to filter errors") != std::string::npos; }));
  EXPECT_TRUE(std::regex_search(scheduler.log(), std::regex("\nE [^\n]*is damaged"))) << scheduler.log();
  scheduler.client("cancel", {"-a", "office"});
  scheduler.send("office", job);
  EXPECT_TRUE(samePages(scheduler.printed("office"), printedByCommand({"NegativeImage=Negative"}))) << scheduler.log();
}

TEST_F(PrintQueue, CountsThePagesWhereNoOtherFilterDoes) {
  scheduler.installKiln("--count-pages");
  scheduler.addQueue("office", alone);
  scheduler.send("office", job, {"-n", "3"});
  scheduler.printed("office");
  EXPECT_THAT(scheduler.pageLog(), HasSubstr("] total 12 ")) << scheduler.log();
}

TEST_F(PrintQueue, EndsAJobThatIsCancelledAndLeavesNothing) {
  // A printer that takes nothing, so that kiln waits for it with a job that no pipe holds.
  scheduler.installFilter("stalled", "exec sleep 3600");
  scheduler.addQueue("office", "*cupsFilter2: \"application/vnd.cups-pdf application/pdf 0 -\"\n"
                               "*cupsFilter2: \"application/pdf application/pdf 0 stalled\"\n"
                               "*cupsPreFilter: \"application/pdf 0 kiln\"\n");
  const std::string content(1 << 20, '\n');
  writeFile(job, "%PDF-1.4\n1 0 obj << /Type /Catalog /Pages 2 0 R >> endobj\n"
                 "2 0 obj << /Type /Pages /Kids [3 0 R] /Count 1 >> endobj\n"
                 "3 0 obj << /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R >> endobj\n"
                 "4 0 obj << /Length " +
                     std::to_string(content.size()) + " >> stream\n" + content +
                     "endstream endobj\ntrailer << /Root 1 0 R >>\n");
  scheduler.send("office", job);
  const auto isPrinted = [&] {
    for (const auto& entry : fs::directory_iterator(scheduler.temporary()))
      if (fs::exists(entry.path() / "out.pdf")) return true;
    return false;
  };
  ASSERT_TRUE(waitUntil(isPrinted)) << scheduler.log();
  std::smatch started;
  const std::string log = scheduler.log();
  ASSERT_TRUE(std::regex_search(log, started, std::regex("filter/kiln \\(PID (\\d+)\\)"))) << log;
  const int filter = std::stoi(started[1]);
  EXPECT_EQ(kill(filter, 0), 0);
  scheduler.client("cancel", {"-a", "office"});
  EXPECT_TRUE(waitUntil([&] { return kill(filter, 0) != 0; }));
  EXPECT_TRUE(fs::is_empty(scheduler.temporary()));
}

}  // namespace
