// Links, pipes and modes.
#include "files/temporary_folder.h"
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

// Sets the mask of this process for a moment.
class Mask {
 public:
  explicit Mask(mode_t mask) : before(::umask(mask)) {}
  ~Mask() { ::umask(before); }
  Mask(const Mask&) = delete;
  Mask& operator=(const Mask&) = delete;

 private:
  mode_t before;
};

mode_t modeOf(const fs::path& path) {
  struct stat status{};
  return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 07777;
}

TEST(RealDisk, GivesTheNewFileItsFinalModeBeforeItHasContent) {
  for (const mode_t mask : {mode_t{0}, mode_t{077}}) {
    const Mask masked(mask);
    const Scratch scratch;
    const auto path = scratch.folder / "marks.xml";
    EXPECT_EQ(modeOf(Files::PendingFile(Files::realDisk(), path).temporary()), 0666u & ~mask);
    put(path, "old");
    for (const mode_t mode : {0600u, 0640u, 0604u, 0666u}) {
      fs::permissions(path, fs::perms(mode));
      EXPECT_EQ(modeOf(Files::PendingFile(Files::realDisk(), path).temporary()), mode) << mask;
    }
  }
}

TEST(RealDisk, MakesAPrivateFolderForItsOwnerAlone) {
  for (const mode_t mask : {mode_t{0}, mode_t{077}}) {
    const Mask masked(mask);
    const Scratch scratch;
    Files::createPrivateFolder(Files::realDisk(), scratch.folder / "above" / "own");
    EXPECT_EQ(modeOf(scratch.folder / "above" / "own"), 0700u);
    EXPECT_EQ(modeOf(scratch.folder / "above"), 0777u & ~mask);
    Files::createPrivateFolder(Files::realDisk(), scratch.folder / "above");
    EXPECT_EQ(modeOf(scratch.folder / "above"), 0777u & ~mask) << "it was there";
    EXPECT_EQ(modeOf(Files::TemporaryFolder().path()), 0700u);
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

// A group that an ordinary user is not in.
constexpr gid_t foreignGroup = 4711;

TEST(RealDisk, GivesTheGroupOfTheOldFileWhatItMay) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  const gid_t group = ::geteuid() == 0 ? foreignGroup : ::getegid();
  ASSERT_EQ(::chown(path.c_str(), static_cast<uid_t>(-1), group), 0);
  fs::permissions(path, fs::perms(0640));
  Files::replaceWhole(Files::realDisk(), path, "new");
  struct stat status{};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_gid, group);
  EXPECT_EQ(status.st_mode & 0777, 0640u);
}

// The file of a foreign group, which only root can make, is the owner's alone once that cannot be kept.
TEST(RealDisk, GivesNoOtherGroupWhatTheOldFilesGroupMay) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  const bool isRoot = ::geteuid() == 0;
  ASSERT_TRUE(!isRoot || ::chown(path.c_str(), 65534, foreignGroup) == 0);
  fs::permissions(path, fs::perms(0664));
  fs::permissions(scratch.folder, fs::perms(0777));
  EXPECT_TRUE(asOrdinaryUser([&] { return Files::replaceWhole(Files::realDisk(), path, "new"); }));
  EXPECT_EQ(modeOf(path), isRoot ? 0604u : 0664u);
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
