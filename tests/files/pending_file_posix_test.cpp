// A file that is written piece by piece before it replaces the old one.
#include "files/whole_file.h"
#include "scratch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <string>

namespace {

namespace fs = std::filesystem;
using Files::PendingFile;
using Files::realDisk;
using testing::ElementsAre;

void commit(PendingFile& file) {
  file.finish();
  file.putInPlace();
}

TEST(PendingFile, IsThereOnlyWhenItIsInPlace) {
  const Scratch scratch;
  PendingFile file(realDisk(), scratch.folder / "out");
  file.write("new");
  EXPECT_FALSE(fs::exists(scratch.folder / "out"));
  commit(file);
  EXPECT_EQ(contentOf(scratch.folder / "out"), "new");
  EXPECT_THAT(namesIn(scratch.folder), ElementsAre("out"));
}

TEST(PendingFile, LeavesTheOldOneWhenItIsGivenUp) {
  const Scratch scratch;
  put(scratch.folder / "out", "old");
  {
    PendingFile file(realDisk(), scratch.folder / "out");
    file.write("new");
    EXPECT_EQ(contentOf(scratch.folder / "out"), "old");
  }
  EXPECT_EQ(contentOf(scratch.folder / "out"), "old");
  EXPECT_THAT(namesIn(scratch.folder), ElementsAre("out"));
}

TEST(PendingFile, ReplacesTheOldOneWhole) {
  const Scratch scratch;
  put(scratch.folder / "out", "much longer than what replaces it");
  PendingFile file(realDisk(), scratch.folder / "out");
  file.write("new");
  commit(file);
  EXPECT_EQ(contentOf(scratch.folder / "out"), "new");
}

// Its first pieces are on their way to the medium while the last are written.
TEST(PendingFile, HoldsAllOfALargeFile) {
  const Scratch scratch;
  std::string all;
  PendingFile file(realDisk(), scratch.folder / "out");
  for (std::size_t i = 0; i < 21; ++i) {
    const std::string piece((1 << 20) + i, static_cast<char>(97 + i));
    file.write(piece);
    all += piece;
  }
  commit(file);
  EXPECT_TRUE(contentOf(scratch.folder / "out") == all);
}

TEST(PendingFile, KeepsThePermissionsOfTheOldOne) {
  const Scratch scratch;
  put(scratch.folder / "out", "old");
  constexpr fs::perms kept = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
  fs::permissions(scratch.folder / "out", kept);
  PendingFile file(realDisk(), scratch.folder / "out");
  commit(file);
  EXPECT_EQ(fs::status(scratch.folder / "out").permissions(), kept);
}

TEST(PendingFile, GoesThroughALinkThatIsFollowed) {
  const Scratch scratch;
  put(scratch.folder / "real", "old");
  fs::create_symlink("real", scratch.folder / "link");
  PendingFile file(realDisk(), Files::linkTarget(scratch.folder / "link"));
  file.write("new");
  commit(file);
  EXPECT_TRUE(fs::is_symlink(scratch.folder / "link"));
  EXPECT_EQ(contentOf(scratch.folder / "real"), "new");
  EXPECT_EQ(Files::linkTarget(scratch.folder / "real"), scratch.folder / "real");
}

TEST(PendingFile, RefusesFoldersDevicesAndMissingFolders) {
  const Scratch scratch;
  ::mkfifo((scratch.folder / "pipe").c_str(), 0600);
  EXPECT_THROW(PendingFile(realDisk(), scratch.folder), Files::DiskError);
  EXPECT_THROW(PendingFile(realDisk(), scratch.folder / "pipe"), Files::DiskError);
  EXPECT_THROW(PendingFile(realDisk(), scratch.folder / "missing/out"), Files::DiskError);
  EXPECT_THAT(namesIn(scratch.folder), ElementsAre("pipe"));
}

TEST(PendingFile, TakesTheLongestName) {
  const Scratch scratch;
  const std::string name(255, 'n');
  PendingFile file(realDisk(), scratch.folder / name);
  commit(file);
  EXPECT_THAT(namesIn(scratch.folder), ElementsAre(name));
}

}  // namespace
