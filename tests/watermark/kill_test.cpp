// Kills the process, and cuts the power, at every step of opening, adding, editing and deleting.
#include "store_changes.h"
#include "tests/files/cut_disk.h"
#include "tests/files/failing_disk.h"
#include "tests/files/model_disk.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using namespace Effect;
using testing::AnyOf;

class Kill : public testing::TestWithParam<Change> {};

TEST_P(Kill, LeavesEveryRecordOfTheUsers) {
  int points = 0;
  for (int killedAt = 1;; ++killedAt) {
    Home home;
    home.putUserFile(userFileBytes);
    home.putLocalFile("a", oneRecord("WM_a", "from a"));
    CutDisk disk;
    disk.killedAt = killedAt;
    bool isDead = false;
    StoreWorld world(home.folder.path, disk);
    try {
      GetParam().make(*world.open());
    } catch (const Killed&) {
      isDead = true;
    }
    StoreWorld next(home.folder.path);
    const auto store = next.open();
    EXPECT_TRUE(next.face.failures.empty());
    const bool isThere = std::any_of(GetParam().oneOf.begin(), GetParam().oneOf.end(),
                                     [&](const std::u16string& name) { return store->hasName(name); });
    EXPECT_TRUE(isThere) << killedAt;
    EXPECT_TRUE(store->hasName(u"from a")) << killedAt;
    if (!isDead) break;
    ++points;
  }
  EXPECT_GT(points, 12);
}

TEST_P(Kill, LeavesEachFileWholeWhateverThePowerLossKeeps) {
  const std::filesystem::path userFile = "/home/user/ZVeffect.xml";
  ModelDisk disk;
  disk.createFolder("/home/user");
  disk.place(userFile, userFileBytes);
  StoreWorld world("/home", disk);

  std::set<std::string> left;
  std::set<std::string> whole = {userFileBytes};
  disk.look = [&](const std::set<ModelDisk::Contents>& states) {
    for (const auto& files : states) {
      const auto found = files.find(userFile);
      left.insert(found == files.end() ? std::string() : found->second);
    }
    whole.insert(disk.seen().at(userFile));
  };
  GetParam().make(*world.open());
  whole.insert(disk.seen().at(userFile));
  EXPECT_GE(left.size(), 2U);
  EXPECT_TRUE(std::includes(whole.begin(), whole.end(), left.begin(), left.end()));
}

INSTANTIATE_TEST_SUITE_P(While, Kill, testing::ValuesIn(changes), [](const auto& each) { return each.param.name; });

// A step that fails, after which the store must still work.
class Failure : public testing::TestWithParam<Change> {};

TEST_P(Failure, LosesNothingThatIsSavedLater) {
  bool hasFailed = true;
  for (int failing = 1; hasFailed; ++failing) {
    const Home home;
    home.putUserFile(userFileBytes);
    home.putLocalFile("a", oneRecord("WM_a", "from a"));
    FailingDisk disk(Files::realDisk());
    StoreWorld world(home.folder.path, disk);
    const auto store = world.open();
    disk.operations = 0;
    disk.failing = failing;
    try {
      GetParam().make(*store);
    } catch (const Kiln::Exception&) {
    }
    hasFailed = disk.operations >= failing;
    disk.failing = 0;
    world.add(*store, u"later");
    StoreWorld next(home.folder.path);
    EXPECT_EQ(next.list(*next.open()), world.list(*store)) << failing;
    EXPECT_TRUE(store->hasName(u"from a")) << failing;
  }
}

INSTANTIATE_TEST_SUITE_P(While, Failure, testing::ValuesIn(changes.begin() + 1, changes.end()),
                         [](const auto& each) { return each.param.name; });

TEST(KillWhileSeeding, LeavesNoFileOrAWholeOne) {
  for (int killedAt = 1;; ++killedAt) {
    Home home;
    CutDisk disk;
    disk.killedAt = killedAt;
    bool isDead = false;
    StoreWorld world(home.folder.path, disk);
    try {
      world.open();
    } catch (const Killed&) {
      isDead = true;
    }
    StoreWorld next(home.folder.path);
    EXPECT_EQ(next.list(*next.open()).size(), 6U) << killedAt;
    EXPECT_TRUE(next.face.failures.empty()) << killedAt;
    if (!isDead) break;
  }
}

TEST(KillWhileSettingAside, LosesNothingOfTheDamagedFile) {
  for (int killedAt = 1;; ++killedAt) {
    Home home;
    home.putUserFile("damaged");
    CutDisk disk;
    disk.killedAt = killedAt;
    bool isDead = false;
    StoreWorld world(home.folder.path, disk);
    try {
      world.open();
    } catch (const Killed&) {
      isDead = true;
    }
    const auto copy = home.folder.path / "user" / "ZVeffect.damaged-1.xml";
    EXPECT_THAT("damaged", AnyOf(bytesOf(world.userFile()), bytesOf(copy))) << killedAt;
    StoreWorld next(home.folder.path);
    EXPECT_EQ(next.list(*next.open()).size(), 6U) << killedAt;
    EXPECT_EQ(bytesOf(copy), "damaged") << killedAt;
    if (!isDead) break;
  }
}

}  // namespace
