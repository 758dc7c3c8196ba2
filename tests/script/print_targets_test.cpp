// Where kiln print sends its pages, and what it asks of a job first: printers, terminals, passwords.
#include "tests/script/scheduler.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

namespace {

using std::filesystem::path;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class PrintTargets : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(runKiln({"sample", job.string()}).status, 0); }

  Outcome print(const std::vector<std::string>& words, const std::vector<std::string>& environment = {}) const {
    std::vector<std::string> all = {"print", job.string(), "--home", (testFolder() / "home").string()};
    all.insert(all.end(), words.begin(), words.end());
    return runKiln(all, "", environment);
  }

  // Protects the job with a password.
  void lock(const std::string& password) const {
    const path locked = testFolder() / "locked.pdf";
    ASSERT_EQ(runProgram("qpdf", {"--encrypt", password, "owner", "256", "--", job.string(), locked.string()}).status,
              0);
    std::filesystem::rename(locked, job);
  }

  const path job = testFolder() / "job.pdf";
  const path out = testFolder() / "out.pdf";
};

class PrintOnPrinters : public PrintTargets {
 protected:
  PrintOnPrinters() {
    scheduler.installFilter("keep", "echo \"copies=$4 options=$5\" >&2; cat ${6:+\"$6\"}");
    scheduler.addQueue("office", "*cupsFilter2: \"application/pdf application/pdf 0 keep\"\n");
  }

  std::vector<std::string> environment() const {
    return {"CUPS_SERVER=" + scheduler.server(), "HOME=" + testFolder().string()};
  }

  Scheduler scheduler{testFolder() / "scheduler"};
};

TEST_F(PrintOnPrinters, SendsThePrintedPages) {
  ASSERT_EQ(print({out.string(), "--set", "NegativeImage=Negative", "--pages", "2-"}).status, 0);
  const auto outcome =
      print({"--printer", "office", "--set", "NegativeImage=Negative", "--pages", "2-"}, environment());
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "office-1\n");
  EXPECT_EQ(outcome.err, "");
  EXPECT_TRUE(samePages(scheduler.printed("office"), readFile(out))) << scheduler.log();
}

TEST_F(PrintOnPrinters, AskForCopiesAndSides) {
  const auto outcome =
      print({"--printer", "office", "--copies", "3", "--sides", "two-sided-short-edge"}, environment());
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  scheduler.printed("office");
  EXPECT_THAT(scheduler.log(), AllOf(HasSubstr("copies=3 "), HasSubstr("sides=two-sided-short-edge")));
}

TEST_F(PrintOnPrinters, RefusesAPrinterThatThereIsNotBeforeTheJobIsPrinted) {
  writeFile(job, "damaged");
  const auto outcome = print({"--printer", "ofice"}, environment());
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kiln: There is no printer \"ofice\"; there are \"office\". Did you mean \"office\"?\n");
}

TEST_F(PrintOnPrinters, SaysThatAPrinterTakesNoJobs) {
  scheduler.client("cupsreject", {"office"});
  const auto outcome = print({"--printer", "office"}, environment());
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, StartsWith("kiln: The printer \"office\" does not take the job ("));
}

TEST_F(PrintOnPrinters, SendsNothingOfAJobThatCannotBePrinted) {
  writeFile(job, "damaged");
  const auto outcome = print({"--printer", "office"}, environment());
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("job.pdf\" is not a PDF"));
  EXPECT_EQ(scheduler.client("lpstat", {"-W", "all", "-o"}), "");
}

TEST_F(PrintTargets, AreRefusedWhereTheyMakeNoSense) {
  for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
           {out.string(), "--printer", "office"},
           {out.string(), "--copies", "2"},
           {out.string(), "--sides", "one-sided"},
           {"--printer", "office", "--copies", "0"},
       }) {
    const auto outcome = print(words);
    EXPECT_EQ(outcome.status, 2) << words.back();
    EXPECT_THAT(outcome.err, StartsWith("kiln: "));
  }
  const auto outcome = print({"--printer", "office", "--sides", "two-sided-longedge"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("Did you mean \"two-sided-long-edge\""));
}

TEST_F(PrintTargets, ThatAreTerminalsAreRefused) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  ASSERT_GE(terminal, 0);
  ASSERT_EQ(grantpt(terminal) + unlockpt(terminal), 0);
  const path err = testFolder() / "stderr";
  const std::string home = (testFolder() / "home").string();
  const auto status = [&](const std::vector<std::string>& words) {
    std::vector<std::string> all = {KILN, "print", job.string(), "-", "--home", home};
    all.insert(all.end(), words.begin(), words.end());
    return runProcess(all, {}, {"/dev/null", ptsname(terminal), err});
  };
  EXPECT_EQ(status({}), 2);
  EXPECT_THAT(readFile(err), StartsWith("kiln: Standard output is a terminal, which cannot show a PDF: name a file"));
  EXPECT_EQ(status({"--dry-run"}), 0);
  close(terminal);
}

TEST_F(PrintTargets, TakeThePasswordOfAJobFromAFile) {
  lock("sesame");
  const path secret = testFolder() / "secret.txt";
  writeFile(secret, "sesame\r\nand a note\n");
  const auto outcome = print({out.string(), "--password-file", secret.string()});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(readFile(out), AllOf(StartsWith("%PDF"), Not(HasSubstr("/Encrypt"))));

  EXPECT_EQ(runKiln({"picture", job.string(), (testFolder() / "page.png").string(), "--password-file", secret}).status,
            0);
  EXPECT_EQ(runKiln({"overlay", "create", "Form", job.string(), "--password-file", secret, "--home",
                     (testFolder() / "home").string()})
                .status,
            0);
}

TEST_F(PrintTargets, AreNotChosenByAnEmptyName) {
  const auto refusal = [this](const char* option) {
    const auto outcome = print({out.string(), option, ""});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_FALSE(std::filesystem::exists(out));
    return outcome.err;
  };
  EXPECT_THAT(refusal("--printer"), StartsWith("kiln: --printer: a printer has to be named; see "));
  EXPECT_THAT(refusal("--password-file"), StartsWith("kiln: --password-file: a file has to be named; see "));
}

TEST_F(PrintTargets, AskForAPasswordInTheUsersLanguage) {
  lock("sesame");
  const auto asked = [&](const std::string& locale) { return print({out.string()}, {"LANG=" + locale}).err; };
  EXPECT_THAT(asked("de_DE.UTF-8"), HasSubstr(", oder geben Sie das Kennwort mit --password-file FILE an."));
  EXPECT_THAT(asked("ja_JP.UTF-8"), HasSubstr("印刷してください。または --password-file FILE でパスワード"));
  EXPECT_THAT(asked("zh_CN.UTF-8"), HasSubstr("的副本后打印，或用 --password-file FILE 指定密码。"));
}

TEST_F(PrintTargets, SayWhatIsWrongWithAPassword) {
  lock("sesame");
  EXPECT_THAT(print({out.string()}).err, AllOf(HasSubstr("job.pdf\" needs a password"),
                                               HasSubstr("or give the password by --password-file FILE.")));
  const path secret = testFolder() / "secret.txt";
  const auto failure = [&](const std::string& content) {
    writeFile(secret, content);
    const auto outcome = print({out.string(), "--password-file", secret.string()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_FALSE(std::filesystem::exists(out));
    return outcome.err;
  };
  EXPECT_THAT(failure("barley\n"), AllOf(HasSubstr("does not open with this password"), Not(HasSubstr("barley"))));
  EXPECT_THAT(failure(""), HasSubstr("secret.txt is empty"));
  EXPECT_THAT(failure("\nsesame"), HasSubstr("secret.txt is empty"));
  EXPECT_THAT(failure(std::string(2000, 'a')), HasSubstr("it is too long"));
  EXPECT_THAT(print({out.string(), "--password-file", "nowhere.txt"}).err, HasSubstr("nowhere.txt cannot be read"));
}

}  // namespace
