// kiln filter, called as a print scheduler calls it.
#include "tests/script/process.h"
#include "tests/script/started.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace {

using std::filesystem::path;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

class FilterCommand : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(runKiln({"sample", job.string()}).status, 0);
    for (const path& folder : {tickets, temporary, data}) fs::create_directories(folder);
  }

  // Calls the filter with the words before the job's and the job's own, for the queue "office".
  Outcome filter(std::vector<std::string> words, const std::string& input = {}) {
    words.insert(words.begin(), {"filter", "--tickets", tickets.string()});
    return runKiln(words, input, environment());
  }
  Outcome filterJob(const std::string& options = {}, std::vector<std::string> ownWords = {}) {
    ownWords.insert(ownWords.end(), {"7", "nobody-here", "A title", "1", options, job.string()});
    return filter(ownWords);
  }

  std::vector<std::string> environment() const {
    return {"PRINTER=" + queue, "TMPDIR=" + temporary.string(), "XDG_DATA_HOME=" + data.string()};
  }

  // What kiln print makes of the job with these settings.
  std::string printed(std::vector<std::string> words) {
    const path out = testFolder() / "printed.pdf";
    words.insert(words.begin(), {"print", job.string(), out.string(), "--home", (testFolder() / "home").string()});
    EXPECT_EQ(runKiln(words).status, 0);
    return readFile(out);
  }

  void writeTicket(const std::string& setting) {
    writeFile(tickets / "office.xml",
              runKiln({"ticket", "--set", setting, "--home", (testFolder() / "home").string()}).out);
  }

  // As the window keeps them.
  void keepSettings(const path& home, const std::string& members) {
    fs::create_directories(home / "profile");
    writeFile(home / "profile" / "settings-standard.json", "{\"values\": {" + members + "}}");
  }

  void expectRefusal(const Outcome& outcome, const std::string& part) {
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, HasSubstr("ERROR: "));
    EXPECT_THAT(outcome.err.substr(outcome.err.find("ERROR: ")), AllOf(HasSubstr(part), MatchesRegex("[^\n]*\n")));
  }

  std::string queue = "office";
  const path job = testFolder() / "job.pdf";
  const path tickets = testFolder() / "tickets";
  const path temporary = testFolder() / "tmp";
  const path data = testFolder() / "data";
};

TEST_F(FilterCommand, PrintsWithTheTicketOfItsQueue) {
  writeTicket("NegativeImage=Negative");
  const auto outcome = filterJob();
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(samePages(outcome.out, printed({"--set", "NegativeImage=Negative"})));
  EXPECT_FALSE(samePages(outcome.out, printed({})));
  EXPECT_THAT(outcome.err, AllOf(StartsWith("DEBUG: "), HasSubstr("office.xml")));
}

TEST_F(FilterCommand, PrintsWithTheSettingsOfAnImportThatWasInterrupted) {
  const path home = testFolder() / "kept";
  keepSettings(home, R"("NegativeImage": "Negative")");
  fs::rename(home / "profile" / "settings-standard.json", home / "profile" / ".kiln-2147483645-1.tmp");
  writeFile(home / "import.journal", std::string("kiln-file-set 1\nprofile/.kiln-2147483645-1.tmp") + '\0' +
                                         "profile/settings-standard.json" + '\0');
  const auto outcome = filterJob({}, {"--home", home.string()});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(samePages(outcome.out, printed({"--set", "NegativeImage=Negative"})));
}

TEST_F(FilterCommand, TakesTheJobFromStandardInputToo) {
  writeTicket("NegativeImage=Negative");
  const auto outcome = filter({"7", "somebody", "A title", "1", ""}, readFile(job));
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(samePages(outcome.out, printed({"--set", "NegativeImage=Negative"})));
  EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(FilterCommand, PrintsWithAHomeWhoseJournalLeadsOutOfItAndMovesNothing) {
  const path home = testFolder() / "kept";
  keepSettings(home, R"("NegativeImage": "Negative")");
  const path victim = testFolder() / "victim";
  writeFile(victim, "precious");
  writeFile(testFolder() / ".kiln-2147483645-1.tmp", "hostile");
  writeFile(home / "import.journal",
            std::string("kiln-file-set 1\n../.kiln-2147483645-1.tmp") + '\0' + "../victim" + '\0');
  const auto outcome = filterJob({}, {"--home", home.string()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(samePages(outcome.out, printed({"--set", "NegativeImage=Negative"})));
  EXPECT_THAT(outcome.err, HasSubstr("import.journal is refused"));
  EXPECT_EQ(readFile(victim), "precious");
}

TEST_F(FilterCommand, LeavesTheJobAsItIsAndSaysSoWhereNothingIsSet) {
  const auto outcome = filterJob();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(samePages(outcome.out, printed({})));
  EXPECT_THAT(outcome.err, StartsWith("WARNING: "));
}

TEST_F(FilterCommand, TakesNothingOfTheJobsWordsForAnOptionOfItsOwn) {
  writeTicket("NegativeImage=Negative");
  const auto outcome = filter({"7", "--help", "--tickets=/", "1", "--model=kvt", job.string()});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(samePages(outcome.out, printed({"--set", "NegativeImage=Negative"})));
}

TEST_F(FilterCommand, OtherQueueHasNothingOfTheTicket) {
  writeTicket("NegativeImage=Negative");
  queue = "other";
  EXPECT_TRUE(samePages(filterJob().out, printed({})));
}

TEST_F(FilterCommand, QueueCannotNameAFileElsewhere) {
  writeFile(testFolder() / "office.xml", "no ticket");
  for (const char* name : {"../office", ".office", "a/b"}) {
    queue = name;
    expectRefusal(filterJob(), name);
  }
}

TEST_F(FilterCommand, TicketThatEverybodyMayChangeIsRefused) {
  writeTicket("NegativeImage=Negative");
  fs::permissions(tickets / "office.xml", fs::perms::others_write, fs::perm_options::add);
  expectRefusal(filterJob(), "office.xml may be changed by everybody");
  fs::permissions(tickets / "office.xml", fs::perms::others_write, fs::perm_options::remove);
  fs::permissions(tickets, fs::perms::others_write, fs::perm_options::add);
  expectRefusal(filterJob(), "tickets may be changed by everybody");
}

TEST_F(FilterCommand, TicketThatIsNoneEndsTheJob) {
  writeFile(tickets / "office.xml", "<ticket>\n<open>");
  expectRefusal(filterJob(), "office.xml:2: ");
  expectRefusal(filterJob(), "; write the ticket anew with \"kiln ticket\".\n");
}

TEST_F(FilterCommand, TicketThatCannotBeReachedEndsTheJob) {
  fs::create_symlink("nonexistent", tickets / "office.xml");
  expectRefusal(filterJob(), "office.xml cannot be reached");
  fs::remove(tickets / "office.xml");
  fs::create_symlink("office.xml", tickets / "office.xml");
  expectRefusal(filterJob(), "office.xml cannot be reached");
  fs::remove_all(tickets);
  fs::create_symlink("nonexistent", tickets);
  expectRefusal(filterJob(), "tickets cannot be reached");
}

TEST_F(FilterCommand, KeptSettingsThatCannotBeReachedEndTheJob) {
  const path home = testFolder() / "shared";
  fs::create_directories(home / "profile");
  fs::create_symlink("nonexistent", home / "profile" / "settings-standard.json");
  expectRefusal(filterJob("", {"--home", home.string()}), "settings-standard.json cannot be reached");
}

TEST_F(FilterCommand, PrintsAsTheUserWhomItRunsAsAcceptedIt) {
  const passwd* account = getpwuid(geteuid());
  if (account == nullptr) FAIL() << "nobody runs this test";
  keepSettings(data / "kiln", R"("MirrorImage": "MirrorImage")");
  const auto own = filter({"7", account->pw_name, "A title", "1", "", job.string()});
  EXPECT_TRUE(samePages(own.out, printed({"--set", "MirrorImage=MirrorImage"}))) << own.err;
  EXPECT_TRUE(samePages(filterJob().out, printed({}))) << "the job of another user";
}

TEST_F(FilterCommand, MakesNoFolderForAUserWhoAcceptedNothing) {
  const passwd* account = getpwuid(geteuid());
  if (account == nullptr) FAIL() << "nobody runs this test";
  EXPECT_EQ(filter({"7", account->pw_name, "A title", "1", "", job.string()}).status, 0);
  EXPECT_TRUE(fs::is_empty(data));
}

TEST_F(FilterCommand, TicketGoesBeforeWhatTheUserAccepted) {
  const passwd* account = getpwuid(geteuid());
  if (account == nullptr) FAIL() << "nobody runs this test";
  keepSettings(data / "kiln", R"("MirrorImage": "MirrorImage")");
  writeTicket("NegativeImage=Negative");
  EXPECT_TRUE(samePages(filter({"7", account->pw_name, "A title", "1", "", job.string()}).out,
                        printed({"--set", "NegativeImage=Negative"})));
}

TEST_F(FilterCommand, NamedHomeCountsForEverybodysJobs) {
  const path home = testFolder() / "shared";
  keepSettings(home, R"("MirrorImage": "MirrorImage", "NoSuch": "1")");
  EXPECT_TRUE(samePages(filterJob("", {"--home", home.string()}).out, printed({"--set", "MirrorImage=MirrorImage"})));
}

TEST_F(FilterCommand, DamagedKeptSettingsEndTheJob) {
  const path home = testFolder() / "shared";
  keepSettings(home, "\"MirrorImage\"");
  expectRefusal(filterJob("", {"--home", home.string()}), "settings-standard.json");
}

TEST_F(FilterCommand, JobChoosesWhatIsAllowedOnTopOfTheTicket) {
  writeTicket("NegativeImage=Negative");
  const auto outcome = filterJob("sides=one-sided kiln-MirrorImage=MirrorImage media=a4", {"--allow", "MirrorImage"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(samePages(outcome.out, printed({"--set", "NegativeImage=Negative", "--set", "MirrorImage=MirrorImage"})));
}

TEST_F(FilterCommand, JobCannotChooseWhatIsNotAllowed) {
  expectRefusal(filterJob("kiln-MirrorImage=MirrorImage"), "\"kiln-MirrorImage\"");
  expectRefusal(filterJob("kiln-Rotate180=Rotate180", {"--allow", "MirrorImage"}), "\"kiln-Rotate180\"");
}

TEST_F(FilterCommand, JobCannotChooseATextOrAPathEvenWhereItIsAllowed) {
  expectRefusal(filterJob("kiln-OverlaySourceFileName=/etc/passwd", {"--allow", "OverlaySourceFileName"}),
                "takes any text");
}

TEST_F(FilterCommand, WhatIsAllowedIsAPropertyThatJobsCanChoose) {
  expectRefusal(filterJob("", {"--allow", "mirrorimage"}),
                "There is no property \"mirrorimage\"; did you mean \"MirrorImage\"");
  expectRefusal(filterJob("", {"--allow", "MirrorImage", "--allow", "WatermarkText"}), "takes any text");
}

TEST_F(FilterCommand, JobCannotChooseWhatIsNoOption) {
  expectRefusal(filterJob("kiln-MirrorImage=On", {"--allow", "MirrorImage"}), "\"On\"");
}

TEST_F(FilterCommand, PagesAreCountedWhereThatIsAsked) {
  writeTicket("NegativeImage=Negative");
  const auto outcome = filter({"--count-pages", "7", "somebody", "A title", "3", "", job.string()});
  EXPECT_THAT(outcome.err, HasSubstr("\nPAGE: 1 3\nPAGE: 2 3\nPAGE: 3 3\nPAGE: 4 3\n"));
  EXPECT_THAT(filterJob().err, Not(HasSubstr("PAGE: ")));
}

TEST_F(FilterCommand, JobThatIsNoPdfIsOneSentence) {
  expectRefusal(filter({"7", "somebody", "A title", "1", ""}, "This is no PDF."), "ERROR: Standard input is not a PDF");
  expectRefusal(filter({"7", "somebody", "A title", "1", ""}), "ERROR: Standard input is not a PDF");
  writeFile(job, "This is no PDF.");
  expectRefusal(filterJob(), "job.pdf");
  EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(FilterCommand, FolderForTemporaryFilesThatIsNoneIsOneSentence) {
  fs::remove(temporary);
  expectRefusal(filterJob(), "TMPDIR");
  EXPECT_THAT(filterJob().err, Not(HasSubstr("filesystem error")));
}

TEST_F(FilterCommand, WrongCallIsOneSentence) {
  expectRefusal(filter({"7", "somebody", "A title", "1"}), "JOB USER TITLE COPIES OPTIONS [FILE]");
  expectRefusal(filter({"7", "somebody", "A title", "1", "", "file", "more"}), "JOB USER");
  expectRefusal(filter({}), "JOB USER");
  expectRefusal(filter({"--modle", "kvt", "7", "somebody", "A title", "1", ""}), "--modle");
  expectRefusal(filterJob("", {"--model", "nosuch"}), "nosuch");
  for (const std::string copies : {"abc", "0", "-1", "1.5", "", "99999999999"})
    expectRefusal(filter({"7", "somebody", "A title", copies, "", job.string()}),
                  "The number of copies is \"" + copies + "\"");
}

TEST_F(FilterCommand, MessageIsOneShortLineWhateverIsInIt) {
  const std::string forged = "x\nERROR: \u2028\u001B[2J\u0085\u202Eforged\x9B";
  const auto outcome = filter({"7", "somebody", "A title", forged, "", job.string()});
  EXPECT_EQ(outcome.err,
            "ERROR: The number of copies is \"x ERROR:  \uFFFD[2J \uFFFDforged\uFFFD\": it has to be a whole "
            "number of at least 1.\n");
  // The scheduler breaks a line after some 2,000 bytes.
  const auto longer = filter({"7", "somebody", "A title", std::string(5000, ' ') + "ERROR: forged", "", job.string()});
  EXPECT_LT(longer.err.size(), 1600u);
  EXPECT_THAT(longer.err, EndsWith("...\n"));
  std::string letters;
  for (int i = 0; i < 1000; ++i) letters += "\u6F22";
  EXPECT_THAT(filter({"7", "somebody", "A title", letters, "", job.string()}).err, EndsWith("\u6F22...\n"));
}

TEST_F(FilterCommand, EndsAtTheSchedulersWishAndLeavesNothing) {
  // Nobody writes into it, so the filter waits for its job.
  const path pipe = testFolder() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int writer = open(pipe.c_str(), O_RDWR | O_CLOEXEC);
  const path out = testFolder() / "out";
  const path err = testFolder() / "err";
  Started running({KILN, "filter", "7", "somebody", "A title", "1", ""}, pipe, out, err, environment());
  EXPECT_TRUE(waitUntil([&] { return !fs::is_empty(temporary); }));
  running.signal(SIGTERM);
  EXPECT_EQ(running.wait(), 1);
  close(writer);
  EXPECT_EQ(readFile(out), "");
  EXPECT_THAT(readFile(err), EndsWith("INFO: The job was cancelled.\n"));
  EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(FilterCommand, ReaderThatHasGoneIsASentence) {
  const path err = testFolder() / "err";
  const path pipe = testFolder() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  // Its writing end alone stays open.
  const std::string line = "exec 4<>'" + pipe.string() + "' 5>'" + pipe.string() + "' 4<&-; env TMPDIR='" +
                           temporary.string() + "' '" KILN "' filter 7 somebody Title 1 '' <'" + job.string() +
                           "' >&5 5>&- 2>'" + err.string() + "'";
  const int status = std::system(line.c_str());
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 1);
  EXPECT_THAT(readFile(err), HasSubstr("ERROR: Standard output cannot be written"));
  EXPECT_TRUE(fs::is_empty(temporary));
}

}  // namespace
