// Files that cannot be read to their end, and places that take nothing.
#include "tests/script/process.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

// Runs kiln by a line of the shell, with the words as "$@".
Outcome runLine(const std::string& line, std::vector<std::string> words,
                const std::vector<std::string>& environment = {}) {
  words.insert(words.begin(), {"-c", line, KILN});
  return runProgram("/bin/sh", words, {}, environment);
}

void expectSentence(const Outcome& outcome, int status, const std::string& part) {
  EXPECT_EQ(outcome.status, status);
  EXPECT_THAT(outcome.err, AllOf(StartsWith("kiln: "), HasSubstr(part), EndsWith(".\n")));
  EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1);
}

TEST(ScriptThatCannotBeRead, IsAnErrorAndNotAnEnd) {
  const std::string folder = testFolder().string();
  expectSentence(runLine("exec \"$0\" drive <'" + folder + "'", {}), 2, "The commands cannot be read to their end.");
  expectSentence(runKiln({"drive", folder}), 2, "cannot be read");
}

// A terminal whose other end is closed has an error after what came from there.
TEST(ScriptThatCannotBeRead, IsNotRunFromTheLineWhereItEnds) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_TRUE(terminal > 0 && terminal < 10) << "the shell takes one digit";
  ASSERT_TRUE(grantpt(terminal) == 0 && unlockpt(terminal) == 0);
  const int other = open(ptsname(terminal), O_RDWR | O_NOCTTY | O_CLOEXEC);
  const std::string script = "get MirrorImage\nset MirrorImage MirrorImage";
  ASSERT_EQ(write(other, script.data(), script.size()), static_cast<ssize_t>(script.size()));
  close(other);
  const Outcome outcome = runLine("exec \"$0\" drive <&" + std::to_string(terminal), {});
  close(terminal);
  expectSentence(outcome, 2, "The commands cannot be read to their end.");
  EXPECT_EQ(std::ranges::count(outcome.out, '\n'), 1) << outcome.out;
}

TEST(FullDevice, IsNoFileToReplace) {
  const std::string home = (testFolder() / "home").string();
  const std::string job = (testFolder() / "job.pdf").string();
  ASSERT_EQ(runKiln({"sample", job}).status, 0);
  for (const std::vector<std::string>& words : {std::vector<std::string>{"sample", "/dev/full"},
                                                {"print", job, "/dev/full", "--home", home},
                                                {"profile", "export", "/dev/full", "--home", home}})
    expectSentence(runKiln(words), 1, "/dev/full");
  // The reason is told once.
  for (const std::vector<std::string>& words : {std::vector<std::string>{"sample", "/dev/full"},
                                                {"print", job, "/dev/full", "--home", home},
                                                {"picture", job, "/dev/full"}})
    EXPECT_EQ(runKiln(words).err, "kiln: /dev/full cannot be written: it is no ordinary file.\n");
}

TEST(FullDevice, AsStandardOutputIsAnError) {
  const std::string home = (testFolder() / "home").string();
  const std::string job = (testFolder() / "job.pdf").string();
  ASSERT_EQ(runKiln({"sample", job}).status, 0);
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"ticket", "--home", home}, {"print", job, "-", "--home", home}, {"help"}})
    expectSentence(runLine("exec \"$0\" \"$@\" >/dev/full", words), 1, "Standard output cannot be written");
}

// A process that can write small files only meets the end of its room where one on a full disk does.
TEST(FullDisk, AtAnImportChangesNothing) {
  const fs::path folder = testFolder();
  const fs::path job = folder / "job.pdf";
  const fs::path home = folder / "home";
  const fs::path other = folder / "other";
  const fs::path profile = folder / "mine.zip";
  const fs::path temporary = folder / "tmp";
  fs::create_directories(temporary);
  ASSERT_EQ(runKiln({"sample", job.string()}).status, 0);
  ASSERT_EQ(runKiln({"overlay", "create", "Form", job.string(), "--home", home.string()}).status, 0);
  ASSERT_EQ(runKiln({"profile", "export", profile.string(), "--home", home.string()}).status, 0);
  const auto outcome = runLine("trap '' XFSZ; ulimit -f 2; exec \"$0\" profile import \"$@\"",
                               {profile.string(), "--home", other.string()}, {"TMPDIR=" + temporary.string()});
  expectSentence(outcome, 1, "cannot be written: File too large");
  EXPECT_THAT(outcome.err, HasSubstr(temporary.string())) << "where there is no room";
  EXPECT_FALSE(fs::exists(other));
  EXPECT_TRUE(fs::is_empty(temporary));
}

}  // namespace
