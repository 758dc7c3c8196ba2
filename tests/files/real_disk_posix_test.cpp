// Links, pipes and modes.
#include "files/whole_file.h"
#include "scratch.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

TEST(RealDisk, ReplacesALinkAndNotWhatItPointsTo) {
  const Scratch scratch;
  put(scratch.folder / "elsewhere", "a person's own");
  fs::create_symlink("elsewhere", scratch.folder / "marks.xml");
  EXPECT_TRUE(Files::replaceWhole(Files::realDisk(), scratch.folder / "marks.xml", "bytes"));
  EXPECT_EQ(contentOf(scratch.folder / "elsewhere"), "a person's own");
  EXPECT_FALSE(fs::is_symlink(scratch.folder / "marks.xml"));
  EXPECT_EQ(contentOf(scratch.folder / "marks.xml"), "bytes");
}

TEST(RealDisk, RemovesALinkAndNotWhatItPointsTo) {
  const Scratch scratch;
  put(scratch.folder / "elsewhere", "a person's own");
  fs::create_symlink("elsewhere", scratch.folder / "link");
  EXPECT_TRUE(Files::realDisk().remove(scratch.folder / "link"));
  EXPECT_EQ(namesIn(scratch.folder), std::vector<std::string>{"elsewhere"});
}

TEST(RealDisk, KeepsTheOldFilesPermissions) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  for (const int bits : {0600, 0666}) {
    fs::permissions(path, fs::perms(bits));
    Files::replaceWhole(Files::realDisk(), path, "new " + std::to_string(bits));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(bits));
  }
}

TEST(RealDisk, NeitherWaitsForAPipeNorReplacesIt) {
  const Scratch scratch;
  const auto pipe = scratch.folder / "marks.xml";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(Files::realDisk().kind(pipe), Files::EntryKind::other);
  EXPECT_THROW(Files::realDisk().read(pipe, 100), Files::DiskError);
  EXPECT_THROW(Files::replaceWhole(Files::realDisk(), pipe, "bytes"), Files::DiskError);
  EXPECT_TRUE(fs::is_fifo(pipe));
}

// Runs in an unprivileged process, since root ignores write protection.
template <class Work>
bool asOrdinaryUser(const Work& work) {
  const pid_t child = ::fork();
  if (child == 0) {
    const bool isOrdinary = ::geteuid() != 0 || ::setuid(65534) == 0;
    ::_exit(isOrdinary && work() ? 0 : 1);
  }
  int status = 0;
  return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

constexpr std::string_view permissionAdvice =
    "cannot be written: this user has no permission; change the permissions of the file or its folder and try again.";

bool isRefusedForPermission(const fs::path& path) {
  return sentenceOf<Files::DiskError>([&] { Files::replaceWhole(Files::realDisk(), path, "new"); })
      .ends_with(permissionAdvice);
}

TEST(RealDisk, SaysThatAFolderIsWriteProtected) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  fs::permissions(path, fs::perms(0666));
  fs::permissions(scratch.folder, fs::perms(0555));
  EXPECT_TRUE(asOrdinaryUser([&] { return isRefusedForPermission(path); }));
  fs::permissions(scratch.folder, fs::perms(0755));
  EXPECT_EQ(contentOf(path), "old");
}

TEST(RealDisk, DoesNotReplaceAReadOnlyFile) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  fs::permissions(path, fs::perms(0444));
  fs::permissions(scratch.folder, fs::perms(0777));
  EXPECT_TRUE(asOrdinaryUser([&] { return isRefusedForPermission(path); }));
  EXPECT_EQ(contentOf(path), "old");
  EXPECT_EQ(namesIn(scratch.folder), std::vector<std::string>{"marks.xml"});
}

}  // namespace
