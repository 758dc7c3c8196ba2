// Symbolic links and pipes in place of the store's files.
#include "store_world.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace {

using testing::ElementsAre;
using testing::SizeIs;

TEST_F(Store, ReadsFoldersOfTheLocalDataThatAreLinks) {
  const auto elsewhere = home.folder.path / "elsewhere";
  std::filesystem::create_directories(elsewhere);
  Testing::writeFile(elsewhere / "ZVeffect.xml", oneRecord("WM_e", "elsewhere"));
  std::filesystem::create_directories(home.folder.path / "localdata");
  std::filesystem::create_directory_symlink(elsewhere, home.folder.path / "localdata" / "linked folder");
  EXPECT_THAT(world.list(*world.open()), testing::Contains("WM_e=elsewhere"));
}

TEST_F(Store, WritesNoFileOfTheLocalDataThroughALink) {
  const auto elsewhere = home.folder.path / "elsewhere";
  std::filesystem::create_directories(elsewhere);
  Testing::writeFile(elsewhere / "ZVeffect.xml", oneRecord("WM_e", "elsewhere"));
  std::filesystem::create_directories(home.folder.path / "localdata" / "linked file");
  std::filesystem::create_symlink(elsewhere / "ZVeffect.xml", world.localFile("linked file"));
  const auto store = world.open();
  store->removeRecord(u"WM_e");
  world.add(*store, u"Mine");
  EXPECT_EQ(bytesOf(elsewhere / "ZVeffect.xml"), oneRecord("WM_e", "elsewhere"));
}

TEST_F(Store, DoesNotWaitForAPipeThatIsNamedLikeItsFile) {
  std::filesystem::create_directories(home.folder.path / "localdata" / "a");
  for (const auto& file : {world.userFile(), world.localFile("a")}) ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  EXPECT_THAT(world.list(*world.open()), ElementsAre("0=None"));
  EXPECT_TRUE(std::filesystem::is_fifo(world.userFile()));
  EXPECT_THAT(world.face.failures, SizeIs(1));
}

}  // namespace
