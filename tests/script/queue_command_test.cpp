// kiln queue, on a real print scheduler.
#include "tests/script/scheduler.h"
#include "tests/script/usage.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace {

using std::filesystem::path;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

constexpr const char* pageFilter = "*cupsFilter2: \"application/vnd.cups-pdf application/pdf 0 -\"\n";
constexpr const char* colours = "*OpenUI *ColorModel/Colours: PickOne\n*DefaultColorModel: RGB\n"
                                "*ColorModel RGB/Colour: \"\"\n*ColorModel Gray/Gray: \"\"\n*CloseUI: *ColorModel\n";

class QueueCommand : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(runKiln({"sample", job.string()}).status, 0);
    scheduler.addQueue("office", pageFilter);
    own = scheduler.description("office");
    ASSERT_THAT(own, HasSubstr("vnd.cups-pdf"));
  }

  Outcome queue(std::vector<std::string> words, const std::string& server = {}) {
    words.insert(words.begin(), "queue");
    words.insert(words.end(), {"--queues", scheduler.queues().string()});
    return runKiln(words, "", {"CUPS_SERVER=" + (server.empty() ? scheduler.server() : server)});
  }
  Outcome enable(std::vector<std::string> words, const std::string& name = "office") {
    words.insert(words.begin(), {"enable", name});
    words.insert(words.end(), {"--tickets", scheduler.tickets().string()});
    return queue(words);
  }
  void enabled(const std::vector<std::string>& words, const std::string& name = "office") {
    const Outcome outcome = enable(words, name);
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
  }
  void expectRefusal(const Outcome& outcome, const std::string& part) {
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, AllOf(testing::StartsWith("kiln: "), HasSubstr(part)));
    EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
    EXPECT_EQ(scheduler.description("office"), own);
    EXPECT_FALSE(fs::exists(scheduler.queues() / "office"));
  }

  // What dialogs offer.
  std::string options(const std::string& name = "office") {
    return runProgram("lpoptions", {"-p", name, "-l"}, "", {"CUPS_SERVER=" + scheduler.server(), "HOME=" + home}).out;
  }

  // As the scheduler's own test program judges the description. It looks for filters in the system's folder.
  void expectSound(const std::string& name = "office") {
    const path file = testFolder() / (name + "-to-test.ppd");
    writeFile(file, scheduler.description(name));
    const Outcome outcome = runProgram("cupstestppd", {"-I", "filters", file.string()});
    EXPECT_EQ(outcome.status, 0) << outcome.out;
  }

  std::string writeTicket(const std::vector<std::string>& words) {
    const path file = testFolder() / "ticket.xml";
    std::vector<std::string> all = {"ticket", "--home", home};
    all.insert(all.end(), words.begin(), words.end());
    writeFile(file, runKiln(all).out);
    return file.string();
  }

  std::string printedByCommand(const std::vector<std::string>& settings) {
    const path out = testFolder() / "printed.pdf";
    std::vector<std::string> words = {"print", job.string(), out.string(), "--home", home};
    words.insert(words.end(), settings.begin(), settings.end());
    EXPECT_EQ(runKiln(words).status, 0);
    return readFile(out);
  }
  std::string printed(const std::vector<std::string>& words, const std::string& name = "office") {
    scheduler.send(name, job, words);
    return scheduler.printed(name);
  }

  const std::string home = (testFolder() / "home").string();
  const path job = testFolder() / "job.pdf";
  Scheduler scheduler{testFolder() / "scheduler"};
  std::string own;
};

// A queue that sends PDF on as it is, so that kiln is its only filter and its prints can be compared.
class QueueOfKilnAlone : public QueueCommand {
 protected:
  void SetUp() override {
    QueueCommand::SetUp();
    scheduler.addQueue("alone", "*cupsFilter2: \"application/pdf application/pdf 0 -\"\n");
  }
};

TEST_F(QueueCommand, OffersTheAllowedEffectsInDialogs) {
  enabled({"--allow", "all"});
  EXPECT_THAT(options(),
              AllOf(HasSubstr("kilnWatermark/Watermark: *None Confidential Copy Draft For_internal_use Urgent\n"),
                    HasSubstr("kilnFirstPageOnly/First page only (Watermark): *False True\n"),
                    HasSubstr("kilnMirrorImage/Mirror image: *False True\n"),
                    HasSubstr("kilnRotate180ForA3LD/Rotate 180 degrees for A3/Ledger: *False True\n")));
  EXPECT_THAT(options(), Not(HasSubstr("kilnOverlay"))) << "there are no overlays";
  enabled({"--allow", "MirrorImage"});
  EXPECT_THAT(options(), AllOf(HasSubstr("kilnMirrorImage"), Not(HasSubstr("kilnWatermark"))));
  EXPECT_EQ(queue({"list"}).out, "office\tMirrorImage\n");
}

TEST_F(QueueCommand, NamesTheEffectsInEachLanguage) {
  enabled({"--allow", "all"});
  const std::string description = scheduler.description("office");
  for (const char* line :
       {"*OpenGroup: KilnEffects/Effects\n", "*de.Translation KilnEffects/Effekte: \"\"\n",
        "*de.Translation kilnWatermark/Wasserzeichen: \"\"\n", "*de.kilnWatermark None/Ohne: \"\"\n",
        "*fr.Translation kilnMirrorImage/Image miroir: \"\"\n", "*ja.Translation kilnMirrorImage/鏡像印刷: \"\"\n",
        "*zh_CN.Translation kilnNegativeImage/负片: \"\"\n", "*zh_TW.Translation kilnNegativeImage/負片: \"\"\n",
        "*fr.kilnMirrorImage True/Oui: \"\"\n"})
    EXPECT_THAT(description, HasSubstr(line));
  expectSound();
}

TEST_F(QueueCommand, TranslatesToTheLanguagesOfTheDescription) {
  scheduler.addQueue("office", std::string(pageFilter) +
                                   "*cupsLanguages: \"es\"\n"
                                   "*es.Translation PageSize/Papel: \"\"\n*es.PageSize A4/A4: \"\"\n");
  enabled({"--allow", "all"});
  EXPECT_THAT(scheduler.description("office"), HasSubstr("*es.Translation kilnMirrorImage/Mirror image: \"\"\n"));
  expectSound();
}

TEST_F(QueueCommand, KeepsApartWhatTheRulesOfTheModelDo) {
  scheduler.addQueue("office", std::string(pageFilter) + colours);
  enabled({"--allow", "all", "--model", "kvt"});
  EXPECT_THAT(scheduler.description("office"),
              AllOf(HasSubstr("\n*UIConstraints: *kilnNegativeImage True *ColorModel Gray\n"),
                    HasSubstr("\n*UIConstraints: *ColorModel Gray *kilnNegativeImage True\n")));
  expectSound();
  scheduler.addQueue("office", std::string(pageFilter) + colours);
  enabled({"--allow", "all"});
  EXPECT_THAT(scheduler.description("office"), Not(HasSubstr("UIConstraints")));
}

TEST_F(QueueCommand, LeavesTheDescriptionAsItWas) {
  for (const std::string& ending :
       {std::string("*% the end\n"), std::string("*% the end"), std::string("*% end\r\n")}) {
    scheduler.addQueue("office", pageFilter + ending);
    own = scheduler.description("office");
    ASSERT_TRUE(own.ends_with(ending));
    enabled({"--allow", "all"});
    enabled({"--allow", "MirrorImage"});
    EXPECT_NE(scheduler.description("office"), own);
    const Outcome outcome = queue({"disable", "office"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(scheduler.description("office"), own);
    EXPECT_FALSE(fs::exists(scheduler.queues() / "office"));
    EXPECT_EQ(queue({"list"}).out, "");
  }
}

TEST_F(QueueCommand, TakesOnlyTheEffectsOutOfADescriptionThatOthersHaveChanged) {
  enabled({"--allow", "all"});
  std::string changed = scheduler.description("office");
  changed.insert(changed.find("*DefaultPageSize"), "*% Somebody was here.\n");
  scheduler.addQueueWith("office", changed);
  const Outcome outcome = queue({"disable", "office"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr("only the effects were taken out"));
  own.insert(own.find("*DefaultPageSize"), "*% Somebody was here.\n");
  EXPECT_EQ(scheduler.description("office"), own);
}

TEST_F(QueueCommand, LeavesANewDriverAlone) {
  enabled({"--allow", "all"});
  scheduler.addQueue("office", "*% another driver\n");
  own = scheduler.description("office");
  EXPECT_THAT(queue({"list"}).err, HasSubstr("enable it again"));
  const Outcome outcome = queue({"disable", "office"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr("stays as it is"));
  EXPECT_EQ(scheduler.description("office"), own);
}

TEST_F(QueueCommand, ForgetsAQueueThatIsGone) {
  enabled({"--allow", "all"});
  scheduler.client("lpadmin", {"-x", "office"});
  EXPECT_THAT(queue({"list"}).err, HasSubstr("There is no queue \"office\" any more"));
  EXPECT_EQ(queue({"disable", "office"}).status, 0);
  EXPECT_TRUE(fs::is_empty(scheduler.queues()));
}

TEST_F(QueueCommand, WorksOnADriverlessQueue) {
  const std::string generated = readFile(DRIVERLESS_PPD);
  scheduler.addQueueWith("driverless", generated);
  enabled({"--allow", "all", "--model", "pscript"}, "driverless");
  EXPECT_THAT(scheduler.description("driverless"),
              AllOf(HasSubstr("*UIConstraints: *kilnNegativeImage True *PageSize A3\n"),
                    HasSubstr("*UIConstraints: *kilnNegativeImage True *PageSize Tabloid\n")));
  expectSound("driverless");
  EXPECT_NE(printed({"-o", "kilnWatermark=Draft"}, "driverless"), "");
  EXPECT_THAT(scheduler.log(), HasSubstr("filter/kiln")) << scheduler.log();
  EXPECT_EQ(queue({"disable", "driverless"}).status, 0);
  EXPECT_EQ(scheduler.description("driverless"), generated);
}

TEST_F(QueueOfKilnAlone, PrintsTheMarkThatAJobChooses) {
  enabled({"--allow", "all"}, "alone");
  EXPECT_TRUE(samePages(printed({"-o", "kilnWatermark=Confidential"}, "alone"),
                        printedByCommand({"--watermark", "Confidential"})))
      << scheduler.log();
  EXPECT_TRUE(samePages(printed({"-o", "kilnWatermark=For_internal_use", "-o", "kilnFirstPageOnly=True"}, "alone"),
                        printedByCommand({"--watermark", "For internal use", "--set", "FirstPageOnly=True"})));
  EXPECT_TRUE(
      samePages(printed({"-o", "kilnMirrorImage"}, "alone"), printedByCommand({"--set", "MirrorImage=MirrorImage"})));
  EXPECT_TRUE(samePages(printed({}, "alone"), printedByCommand({})));
}

TEST_F(QueueOfKilnAlone, StopsAJobThatChoosesWhatIsNotOffered) {
  enabled({"--allow", "MirrorImage"}, "alone");
  scheduler.send("alone", job, {"-o", "kilnWatermark=Confidential"});
  EXPECT_TRUE(waitUntil([&] { return scheduler.log().find("Job stopped due to filter errors") != std::string::npos; }));
  EXPECT_THAT(scheduler.log(), HasSubstr("This queue does not offer"));
  scheduler.client("cancel", {"-a", "alone"});
  EXPECT_TRUE(samePages(printed({}, "alone"), printedByCommand({}))) << scheduler.log();
}

TEST_F(QueueOfKilnAlone, StopsJobsWhereWhatWasKeptForItIsLost) {
  enabled({"--ticket", writeTicket({"--watermark", "Draft"})}, "alone");
  fs::remove_all(scheduler.queues());
  scheduler.send("alone", job, {});
  EXPECT_TRUE(waitUntil([&] { return scheduler.log().find("Job stopped due to filter errors") != std::string::npos; }));
  EXPECT_THAT(scheduler.log(), HasSubstr("enable it again"));
}

TEST_F(QueueOfKilnAlone, PrintsWhoeverEnablesIt) {
  const mode_t mask = umask(S_IRWXG | S_IRWXO);
  enabled({"--allow", "all"}, "alone");
  umask(mask);
  EXPECT_TRUE(
      samePages(printed({"-o", "kilnMirrorImage"}, "alone"), printedByCommand({"--set", "MirrorImage=MirrorImage"})))
      << scheduler.log();
}

TEST_F(QueueOfKilnAlone, PrintsItsTicketUnlessAJobChoosesOtherwise) {
  enabled(
      {"--ticket", writeTicket({"--watermark", "Draft", "--set", "MirrorImage=MirrorImage"}), "--allow", "Watermark"},
      "alone");
  EXPECT_THAT(options("alone"), HasSubstr("kilnWatermark/Watermark: None Confidential Copy *Draft "));
  EXPECT_TRUE(
      samePages(printed({}, "alone"), printedByCommand({"--watermark", "Draft", "--set", "MirrorImage=MirrorImage"})));
  EXPECT_TRUE(samePages(printed({"-o", "kilnWatermark=None"}, "alone"),
                        printedByCommand({"--set", "MirrorImage=MirrorImage"})));
}

TEST_F(QueueOfKilnAlone, OffersTheMarkOfATicketThatIsInNoList) {
  ASSERT_EQ(runKiln({"watermark", "add", "Nur für uns", "--home", home}).status, 0);
  enabled({"--ticket", writeTicket({"--watermark", "Nur für uns"}), "--allow", "Watermark"}, "alone");
  EXPECT_THAT(options("alone"), HasSubstr("Urgent *Ticket\n"));
  EXPECT_THAT(scheduler.description("alone"), HasSubstr("*en.kilnWatermark Ticket/Nur für uns: \"\"\n"));
  EXPECT_TRUE(
      samePages(printed({"-o", "kilnWatermark=Ticket"}, "alone"), printedByCommand({"--watermark", "Nur für uns"})));
}

TEST_F(QueueOfKilnAlone, PrintsWithTheDefaultsThatItsAdministratorSetsSince) {
  enabled({"--allow", "all"}, "alone");
  scheduler.client("lpadmin", {"-p", "alone", "-o", "kilnMirrorImage=True"});
  EXPECT_TRUE(samePages(printed({}, "alone"), printedByCommand({"--set", "MirrorImage=MirrorImage"})));
  EXPECT_TRUE(samePages(printed({"-o", "kilnMirrorImage=False"}, "alone"), printedByCommand({})));
}

TEST_F(QueueOfKilnAlone, HasKeywordsForMarksWithAnyName) {
  fs::create_directories(home);  // for the filter, which runs as another user, to read
  for (const char* name : {"社外秘", "Top: secret/draft", "draft", "Ticket"})
    ASSERT_EQ(runKiln({"watermark", "add", name, "--home", home}).status, 0) << name;
  enabled({"--allow", "Watermark", "--home", home}, "alone");
  EXPECT_THAT(options("alone"), testing::ContainsRegex("Top_secretdraft_[0-9a-f]+ Urgent Mark_[0-9a-f]+\n"));
  EXPECT_THAT(scheduler.description("alone"),
              AllOf(HasSubstr("/社外秘: \"\"\n"), HasSubstr("/Top<3A> secret<2F>draft: \"\"\n")));
  expectSound("alone");
  const std::string description = scheduler.description("alone");
  const std::size_t text = description.find("/社外秘: \"\"");
  const std::size_t keyword = description.rfind(' ', text) + 1;
  EXPECT_TRUE(samePages(printed({"-o", "kilnWatermark=" + description.substr(keyword, text - keyword)}, "alone"),
                        printedByCommand({"--watermark", "社外秘"})));
}

// The marks of a home, provided for everybody.
class QueueWithMarksForAll : public QueueOfKilnAlone {
 protected:
  void SetUp() override {
    QueueOfKilnAlone::SetUp();
    fs::create_directories(home);  // for the filter, which runs as another user, to read
    ASSERT_EQ(runKiln({"watermark", "add", "For us", "--home", home}).status, 0);
    ASSERT_EQ(runKiln({"overlay", "create", "Letterhead", job.string(), "--home", home}).status, 0);
    fs::create_directories(marks / "company");
    fs::copy(path(home) / "user" / "ZVeffect.xml", marks / "company");
    fs::copy(path(home) / "profile" / "overlays", marks / "company" / "overlays", fs::copy_options::recursive);
  }

  const path marks = testFolder() / "marks";
  const std::string otherHome = (testFolder() / "other-home").string();
};

TEST_F(QueueWithMarksForAll, OffersAndPrintsThem) {
  enabled({"--allow", "all", "--marks", marks.string()}, "alone");
  EXPECT_THAT(options("alone"), AllOf(HasSubstr(" For_us "), HasSubstr("kilnOverlayImage/Overlay: *None Letterhead\n"),
                                      HasSubstr("kilnOverlayLayering/Over the page (Overlay)")));
  expectSound("alone");
  EXPECT_TRUE(samePages(printed({"-o", "kilnWatermark=For_us"}, "alone"), printedByCommand({"--watermark", "For us"})))
      << scheduler.log();
  EXPECT_TRUE(samePages(printed({"-o", "kilnOverlayImage=Letterhead"}, "alone"),
                        printedByCommand({"--overlay", "Letterhead"})));
}

TEST_F(QueueWithMarksForAll, LetAJobTurnSeveralOverlaysOfATicketOff) {
  const std::string ticket = writeTicket({"--overlay", "Letterhead:1", "--overlay", "Letterhead:2-"});
  enabled({"--ticket", ticket, "--allow", "all", "--marks", marks.string()}, "alone");
  EXPECT_THAT(options("alone"), HasSubstr("kilnOverlayImage/Overlay: None Letterhead *Ticket\n"));
  EXPECT_TRUE(samePages(printed({"-o", "kilnOverlayImage=None"}, "alone"), printedByCommand({})));
}

TEST_F(QueueWithMarksForAll, AreInTheListsOfEachUserAsDownloaded) {
  EXPECT_THAT(runKiln({"watermark", "list", "--home", otherHome, "--marks", marks.string()}).out,
              HasSubstr("For us\tdownloaded\n"));
  EXPECT_EQ(runKiln({"overlay", "list", "--home", otherHome, "--marks", marks.string()}).out,
            "Letterhead\tdownloaded\n");
  const std::string none = runKiln({"overlay", "list", "--home", otherHome, "--marks", "/nowhere"}).out;
  EXPECT_EQ(none, "");
  fs::create_directories(path(otherHome) / "localdata");
  EXPECT_EQ(runKiln({"overlay", "list", "--home", otherHome, "--marks", marks.string()}).out, "")
      << "the home has local data of its own";
}

TEST_F(QueueCommand, RefusesQueuesThatCannotHaveEffects) {
  scheduler.addQueueWith("raw", "");
  scheduler.client("lpadmin", {"-p", "raw", "-c", "all"});
  expectRefusal(enable({"--allow", "all"}, "raw"), "is raw");
  expectRefusal(enable({"--allow", "all"}, "all"), "is a class");
  expectRefusal(enable({"--allow", "all"}, "offise"), "Did you mean \"office\"?");
  expectRefusal(queue({"disable", "offise"}), "There is no printer \"offise\"");
  expectRefusal(enable({"--allow", "Mirror"}), "There is no property \"Mirror\"");
  expectRefusal(enable({"--allow", "WatermarkText"}), "takes any text");
  expectRefusal(enable({"--ticket", job.string()}), "job.pdf");
  expectRefusal(queue({"enable", "office"}, "127.0.0.1:1"), "see that the print service runs");
}

TEST_F(QueueCommand, RefusesAQueueWithAnotherFilterInItsPlace) {
  scheduler.addQueue("office", std::string(pageFilter) + "*cupsPreFilter: \"application/pdf 0 other\"\n");
  own = scheduler.description("office");
  expectRefusal(enable({"--allow", "all"}), "has another filter before all others");
}

TEST_F(QueueCommand, RefusesADescriptionThatHasTwoWaysForAPdf) {
  scheduler.addQueue("office", "*cupsFilter2: \"application/pdf application/pdf 0 -\"\n"
                               "*cupsFilter2: \"application/pdf application/vnd.other 10 pdftopdf\"\n");
  own = scheduler.description("office");
  expectRefusal(enable({"--allow", "all"}), "two ways for a PDF");
}

TEST_F(QueueOfKilnAlone, RunsOnceWhereItsFilterWasPutByHand) {
  scheduler.addQueue("alone", "*cupsFilter2: \"application/pdf application/pdf 0 kiln\"\n");
  enabled({"--allow", "all"}, "alone");
  EXPECT_TRUE(samePages(printed({"-o", "kilnNegativeImage=True"}, "alone"),
                        printedByCommand({"--set", "NegativeImage=Negative"})));
}

TEST_F(QueueOfKilnAlone, SendsPdfOnAsItIsAgain) {
  own = scheduler.description("alone");
  enabled({"--allow", "all"}, "alone");
  EXPECT_EQ(queue({"disable", "alone"}).status, 0);
  EXPECT_EQ(scheduler.description("alone"), own);
}

TEST_F(QueueCommand, PutsTheDescriptionBackWhereTheFilterIsNotInstalled) {
  const path filter = testFolder() / "scheduler" / "bin" / "filter" / "kiln";
  fs::rename(filter, testFolder() / "kiln");
  expectRefusal(enable({"--allow", "all"}), "install kiln there");
  fs::rename(testFolder() / "kiln", filter);
  enabled({"--allow", "MirrorImage"});
  const std::string before = scheduler.description("office");
  fs::remove(filter);
  EXPECT_EQ(enable({"--allow", "all"}).status, 1);
  EXPECT_EQ(scheduler.description("office"), before);
  EXPECT_EQ(queue({"list"}).out, "office\tMirrorImage\n");
}

TEST_F(QueueCommand, SaysWhereNothingIsSetOrAllowed) {
  EXPECT_THAT(enable({}).err, HasSubstr("--allow lets each job choose"));
  const Outcome outcome = queue({"disable", "office"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(scheduler.description("office"), own);
  EXPECT_THAT(queue({"disable", "office"}).err, HasSubstr("has no effects"));
}

TEST(QueueUsage, IsInTheHelp) { expectHelp("queue"); }

}  // namespace
