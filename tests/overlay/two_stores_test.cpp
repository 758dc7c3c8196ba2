// Overlay stores of two processes on one home.
#include "overlay_store.h"
#include "tests/files/forwarding_disk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace {

using testing::ElementsAre;

TEST_F(OverlayStoreTest, KeepsWhatAnotherProcessHasPutIntoTheIndex) {
  home.putUser({{u"one", u"00001.opa"}});
  open();
  OverlayStore other(home.folder.path);
  const auto theirs = other.open();
  Testing::writeFile(theirs->addOverlay(u"theirs"), "overlay");
  theirs->save();
  store->removeOverlay(u"00001.opa", false);
  store->save();
  EXPECT_THAT(records(), ElementsAre(IsNew("theirs")));
  EXPECT_EQ(listed(home.userIndex()), records());
}

TEST_F(OverlayStoreTest, KeepsWhatAnotherProcessHasPutIntoAnIndexOfLocalDataUnderANameOfTheUsers) {
  world.set(u"kilnworks.tips.userdata.support", u"True");
  home.putUser({{u"same", u"00001.opa"}});
  home.putLocal("a", {{u"theirs", u"00002.opa"}});
  open();
  home.putLocal("a", {{u"theirs", u"00002.opa"}, {u"same", u"00003.opa"}});
  store->addOverlay(u"new");
  store->save();
  EXPECT_THAT(listed(bytesOf(OverlayHome::index(home.localFolder("a")))),
              ElementsAre("theirs=00002.opa", "same=00003.opa"));
}

TEST_F(OverlayStoreTest, KeepsItsOwnRecordsOfTheNamesThatAnotherProcessHasAdded) {
  home.putUser({{u"one", u"00001.opa"}});
  open();
  home.putUser({{u"one", u"00002.opa"}, {u"two", u"00003.opa"}});
  store->refresh();
  EXPECT_THAT(records(), ElementsAre("one=00001.opa", "two=00003.opa"));
  store->addOverlay(u"new");
  store->save();
  EXPECT_THAT(listed(home.userIndex()), ElementsAre("one=00002.opa", "one=00001.opa", "two=00003.opa", IsNew("new")));
}

// A disk on which another program changes something when this one is about to replace a file: after it has read it.
class BusyDisk final : public ForwardingDisk {
 public:
  std::unique_ptr<Lock> tryLock(const Path& file, Missing missing) override {
    if (const auto work = std::exchange(meanwhile, {})) work();
    return disk.tryLock(file, missing);
  }
  std::function<void()> meanwhile;
};

TEST(OverlayStoreOnABusyHome, KeepsWhatIsPutIntoTheIndexBetweenItsReadingAndItsReplacing) {
  OverlayHome home;
  home.putUser({{u"one", u"00001.opa"}});
  BusyDisk disk;
  OverlayStore world(home.folder.path, disk);
  const auto store = world.open();
  store->addOverlay(u"ours");
  disk.meanwhile = [&] { home.putUser({{u"one", u"00001.opa"}, {u"theirs", u"00002.opa"}}); };
  store->save();
  EXPECT_THAT(listed(home.userIndex()), ElementsAre("one=00001.opa", "theirs=00002.opa", IsNew("ours")));
}

TEST(OverlayStoreOnABusyHome, RefusesAFileNameThatAnotherProcessHasDrawnAtTheSameTime) {
  OverlayHome home;
  home.putUser({{u"one", u"00001.opa"}});
  BusyDisk disk;
  OverlayStore world(home.folder.path, disk);
  const auto store = world.open();
  const std::u16string path = store->addOverlay(u"ours");
  const std::u16string fileName = std::filesystem::path(path).filename().u16string();
  const std::string theirs = recordBytes(u"one", u"00001.opa") + recordBytes(u"theirs", fileName);
  disk.meanwhile = [&] { Testing::writeFile(OverlayHome::index(home.userFolder()), theirs); };
  EXPECT_THROW(store->save(), Kiln::Exception);
  EXPECT_EQ(home.userIndex(), theirs);
  store->takeBack(path);
  EXPECT_NE(std::filesystem::path(store->addOverlay(u"ours")).filename().u16string(), fileName);
}

TEST(OverlayStoreOnABusyHome, KeepsTheRecordOfAFileThatIsWrittenBetweenTheReadingAndTheReplacingOfItsIndex) {
  OverlayHome home;
  home.putUser({{u"one", u"00001.opa"}, {u"theirs", u"00002.opa"}});
  std::filesystem::remove(home.userFolder() / "00002.opa");
  BusyDisk disk;
  OverlayStore world(home.folder.path, disk);
  const auto store = world.open();
  world.files.guard->endAction();
  store->addOverlay(u"ours");
  disk.meanwhile = [&] { Testing::writeFile(home.userFolder() / "00002.opa", "overlay"); };
  store->save();
  EXPECT_THAT(listed(home.userIndex()), ElementsAre("one=00001.opa", "theirs=00002.opa", IsNew("ours")));
}

// Its job may still be cancelled.
TEST_F(OverlayStoreTest, KeepsTheRecordOfAnOverlayThatAnotherProcessHasSetAside) {
  home.putUser({{u"one", u"00001.opa"}, {u"two", u"00002.opa"}});
  open();
  std::filesystem::rename(home.userFolder() / "00001.opa", home.userFolder() / ".kiln-aside-00001.opa");
  store->removeOverlay(u"00002.opa", false);
  store->save();
  EXPECT_THAT(listed(home.userIndex()), ElementsAre("one=00001.opa"));
  open();
  store->addOverlay(u"new");
  store->save();
  EXPECT_THAT(listed(home.userIndex()), ElementsAre("one=00001.opa", IsNew("new")));
}

TEST_F(OverlayStoreTest, LearnsWhatAnotherProcessHasAdded) {
  open();
  home.putUser({{u"theirs", u"00002.opa"}});
  EXPECT_FALSE(store->hasLabel(u"theirs"));
  store->refresh();
  EXPECT_TRUE(store->hasLabel(u"theirs"));
}

}  // namespace
