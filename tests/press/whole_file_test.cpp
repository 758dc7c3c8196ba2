#include "press/job/whole_file.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <string>
#include <system_error>

namespace fs = std::filesystem;
using Press::WholeFile;
using testing::ElementsAre;

TEST(WholeFile, IsThereOnlyAfterTheCommit) {
  const TestFolder folder;
  WholeFile file(folder / "out");
  file.write("new", 3);
  EXPECT_FALSE(fs::exists(folder / "out"));
  file.commit();
  EXPECT_EQ(read(folder / "out"), "new");
  EXPECT_THAT(folder.names(), ElementsAre("out"));
}

TEST(WholeFile, LeavesTheOldOneWhenItIsGivenUp) {
  const TestFolder folder;
  write(folder / "out", "old");
  {
    WholeFile file(folder / "out");
    file.write("new", 3);
    EXPECT_EQ(read(folder / "out"), "old");
  }
  EXPECT_EQ(read(folder / "out"), "old");
  EXPECT_THAT(folder.names(), ElementsAre("out"));
}

TEST(WholeFile, ReplacesTheOldOneWhole) {
  const TestFolder folder;
  write(folder / "out", "much longer than what replaces it");
  WholeFile file(folder / "out");
  file.write("new", 3);
  file.commit();
  EXPECT_EQ(read(folder / "out"), "new");
}

TEST(WholeFile, KeepsThePermissionsOfTheOldOne) {
  const TestFolder folder;
  write(folder / "out", "old");
  fs::permissions(folder / "out", fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  WholeFile file(folder / "out");
  file.commit();
  EXPECT_EQ(fs::status(folder / "out").permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST(WholeFile, GoesThroughASymbolicLink) {
  const TestFolder folder;
  write(folder / "real", "old");
  fs::create_symlink("real", folder / "link");
  WholeFile file(folder / "link");
  file.write("new", 3);
  file.commit();
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(read(folder / "real"), "new");
}

TEST(WholeFile, RefusesFoldersDevicesAndMissingFolders) {
  const TestFolder folder;
  ::mkfifo((folder / "pipe").c_str(), 0600);
  EXPECT_THROW(WholeFile(folder.path), std::system_error);
  EXPECT_THROW(WholeFile(folder / "pipe"), std::system_error);
  EXPECT_THROW(WholeFile(folder / "missing/out"), std::system_error);
  EXPECT_THAT(folder.names(), ElementsAre("pipe"));
}

TEST(WholeFile, TakesTheLongestName) {
  const TestFolder folder;
  const std::string name(255, 'n');
  WholeFile file(folder / name);
  file.commit();
  EXPECT_THAT(folder.names(), ElementsAre(name));
}
