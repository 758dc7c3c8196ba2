// What the overlay store changes: adding, saving, removing, exporting.
#include "overlay_store.h"
#include "tests/files/forwarding_disk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace {

using namespace Effect;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(OverlayStoreTest, GivesANewOverlayAFileNameOfFiveDigitsInTheUsersFolder) {
  open();
  const std::filesystem::path path = store->addOverlay(u"new");
  EXPECT_EQ(path.parent_path(), home.userFolder());
  EXPECT_PRED1(isDrawnName, path.filename().string());
  EXPECT_EQ(store->record(0).label, u"new");
  EXPECT_EQ(store->record(0).disklabel, u"new");
  EXPECT_EQ(store->record(0).diskpath, path.filename().u16string());
  EXPECT_EQ(store->record(0).path, path.u16string());
  EXPECT_EQ(store->record(0).diskfile, OverlayHome::index(home.userFolder()).u16string());
}

TEST_F(OverlayStoreTest, GivesAKnownLabelThePathOfItsOverlay) {
  home.putUser({{u"one", u"00001.opa"}});
  open();
  EXPECT_EQ(store->addOverlay(u"one"), (home.userFolder() / "00001.opa").u16string());
  EXPECT_EQ(store->count(), 1);
}

// Every overlay file that a store could name is there but one.
class NearlyFullDisk final : public ForwardingDisk {
 public:
  Files::EntryKind kind(const Path& path) override {
    const bool isTaken = isDrawnName(path.filename().string()) && path.filename() != "04711.opa";
    return isTaken ? Files::EntryKind::file : disk.kind(path);
  }
};

TEST(OverlayStoreOnANearlyFullFolder, NeverGivesTheNameOfAFileThatIsThere) {
  OverlayHome home;
  NearlyFullDisk disk;
  OverlayStore world(home.folder.path, disk);
  const auto store = world.open();
  EXPECT_EQ(store->addOverlay(u"new"), (home.userFolder() / "04711.opa").u16string());
  try {
    store->addOverlay(u"one more");
    FAIL() << "04711.opa is still to be written, and no other name is free";
  } catch (const Kiln::Exception& problem) {
    EXPECT_EQ(std::string(problem.what()), "The folder " + home.userFolder().string() +
                                               " has no name left for another overlay; delete files from it.");
  }
  EXPECT_EQ(store->count(), 1);
}

TEST(OverlayStoreOnANearlyFullFolder, NeverGivesTheNameOfAThumbnailThatIsThere) {
  OverlayHome home;
  std::filesystem::create_directories(home.userFolder());
  Testing::writeFile(home.userFolder() / "04711.bmp", "of an overlay that is gone");
  NearlyFullDisk disk;
  OverlayStore world(home.folder.path, disk);
  EXPECT_THROW(world.open()->addOverlay(u"new"), Kiln::Exception);
}

// Its file may be about to be written.
TEST(OverlayStoreOnANearlyFullFolder, NeverGivesTheNameOfAFileThatTheIndexLists) {
  OverlayHome home;
  home.putUser({{u"theirs", u"04711.opa"}});
  std::filesystem::remove(home.userFolder() / "04711.opa");
  std::filesystem::remove(home.userFolder() / "04711.bmp");
  NearlyFullDisk disk;
  OverlayStore world(home.folder.path, disk);
  EXPECT_THROW(world.open()->addOverlay(u"new"), Kiln::Exception);
}

TEST_F(OverlayStoreTest, WritesEachRecordToTheIndexThatItCameFrom) {
  world.set(u"kilnworks.tips.userdata.support", u"True");
  home.putUser({{u"mine", u"00001.opa"}});
  home.putLocal("a", {{u"theirs", u"00002.opa"}});
  open();
  const std::u16string fileName = std::filesystem::path(store->addOverlay(u"new")).filename().u16string();
  store->save();
  EXPECT_EQ(home.userIndex(), recordBytes(u"mine", u"00001.opa") + recordBytes(u"new", fileName));
  EXPECT_EQ(bytesOf(OverlayHome::index(home.localFolder("a"))), recordBytes(u"theirs", u"00002.opa"));
  EXPECT_THAT(world.writes, ElementsAre("profile/overlays/ovlNmFl.flo"));
}

// A disk that tells which folders it was asked to make safe.
class FollowedDisk final : public ForwardingDisk {
 public:
  void syncFolder(const Path& folder) override {
    synced.push_back(folder.generic_string());
    disk.syncFolder(folder);
  }
  std::vector<std::string> synced;
};

// The index of an overlay that is made anew under its name stays as it is, but it has to be safe on the disk.
TEST(OverlayStoreWhoseIndexesStayAsTheyAre, CommitsThoseThatHaveBeenAddedToAlone) {
  OverlayHome home;
  home.putUser({{u"mine", u"00001.opa"}});
  home.putLocal("a", {{u"theirs", u"00002.opa"}});
  FollowedDisk disk;
  OverlayStore world(home.folder.path, disk);
  const auto store = world.open();
  for (const auto& [label, folder] : {std::pair(u"mine", home.userFolder()), {u"theirs", home.localFolder("a")}}) {
    disk.synced.clear();
    store->addOverlay(label);
    store->save();
    EXPECT_THAT(disk.synced, ElementsAre(folder.generic_string()));
  }
}

TEST_F(OverlayStoreTest, AddsToTheIndexOfTheOnlyRecordWhereItIsOfLocalData) {
  home.putLocal("a", {{u"theirs", u"00002.opa"}, {u"stale", u"00003.opa"}});
  std::filesystem::remove(home.localFolder("a") / "00003.opa");
  open().addOverlay(u"theirs");
  store->save();
  EXPECT_THAT(world.writes, ElementsAre("localdata/a/overlays/ovlNmFl.flo"));
}

TEST_F(OverlayStoreTest, DropsAStaleRecordOfAnotherIndexWithTheNextSave) {
  home.putLocal("a", {{u"theirs", u"00002.opa"}, {u"stale", u"00003.opa"}});
  std::filesystem::remove(home.localFolder("a") / "00003.opa");
  std::filesystem::create_directories(home.userFolder());
  open().addOverlay(u"new");
  store->save();
  EXPECT_EQ(bytesOf(OverlayHome::index(home.localFolder("a"))), recordBytes(u"theirs", u"00002.opa"));
}

TEST_F(OverlayStoreTest, DrawsOtherFileNamesAtAnotherTime) {
  const auto names = [] {
    const OverlayHome empty;
    OverlayStore anyWorld(empty.folder.path);
    const auto anyStore = anyWorld.open();
    std::vector<std::filesystem::path> drawn;
    for (const char16_t* label : {u"a", u"b", u"c"})
      drawn.push_back(std::filesystem::path(anyStore->addOverlay(label)).filename());
    return drawn;
  };
  using Clock = std::chrono::system_clock;
  const auto first = names();
  const auto time = Clock::now();
  while (Clock::now() == time) {
  }
  EXPECT_NE(names(), first);
}

TEST_F(OverlayStoreTest, SavesNothingAgainUntilTheNextChange) {
  std::filesystem::create_directories(home.userFolder());
  open();
  store->addOverlay(u"new");
  store->save();
  std::filesystem::remove(OverlayHome::index(home.userFolder()));
  store->save();
  EXPECT_FALSE(std::filesystem::exists(OverlayHome::index(home.userFolder())));
}

TEST_F(OverlayStoreTest, TakesBackNothingThatHasBeenSaved) {
  std::filesystem::create_directories(home.userFolder());
  const std::u16string path = open().addOverlay(u"new");
  store->takeBack(path);
  EXPECT_THAT(records(), IsEmpty());
  const std::u16string saved = store->addOverlay(u"new");
  store->save();
  EXPECT_EQ(store->addOverlay(u"new"), saved);
  store->takeBack(saved);
  EXPECT_THAT(records(), ElementsAre(IsNew("new")));
}

TEST_F(OverlayStoreTest, RemovesTheThumbnailThenTheFileAndLeavesTheIndexToTheNextSave) {
  home.putUser({{u"one", u"00001.opa"}, {u"two", u"00002.opa"}});
  open();
  EXPECT_TRUE(store->removeOverlay(u"00001.opa", false));
  EXPECT_THAT(world.deletions, ElementsAre("profile/overlays/00001.bmp", "profile/overlays/00001.opa"));
  EXPECT_THAT(records(), ElementsAre("two=00002.opa"));
  EXPECT_EQ(store->findByLabel(u"two", false), 0);
  EXPECT_FALSE(store->hasLabel(u"one"));
  EXPECT_EQ(listed(home.userIndex()).size(), 2U);
  store->save();
  EXPECT_EQ(home.userIndex(), recordBytes(u"two", u"00002.opa"));
}

TEST_F(OverlayStoreTest, RemovesAnOverlayThatHasNoThumbnail) {
  home.putUser({{u"one", u"00001.opa"}});
  std::filesystem::remove(home.userFolder() / "00001.bmp");
  open();
  EXPECT_TRUE(store->removeOverlay(u"00001.opa", false));
  EXPECT_FALSE(std::filesystem::exists(home.userFolder() / "00001.opa"));
}

TEST_F(OverlayStoreTest, LeavesAFolderInTheThumbnailsPlaceAlone) {
  home.putUser({{u"one", u"00001.opa"}});
  const auto folder = home.userFolder() / "00001.bmp";
  std::filesystem::remove(folder);
  std::filesystem::create_directory(folder);
  open();
  EXPECT_TRUE(store->removeOverlay(u"00001.opa", false));
  EXPECT_TRUE(std::filesystem::is_directory(folder));
}

TEST_F(OverlayStoreTest, RemovesTheRecordOfAFileThatIsGoneAlready) {
  home.putUser({{u"one", u"00001.opa"}});
  open();
  std::filesystem::remove(home.userFolder() / "00001.opa");
  EXPECT_FALSE(store->removeOverlay(u"00001.opa", false));
  EXPECT_THAT(records(), IsEmpty());
}

TEST_F(OverlayStoreTest, EmptiesAnIndexThatHasLostItsLastRecord) {
  home.putUser({{u"one", u"00001.opa"}});
  open();
  store->removeOverlay(u"00001.opa", false);
  store->save();
  EXPECT_TRUE(std::filesystem::exists(OverlayHome::index(home.userFolder())));
  EXPECT_EQ(home.userIndex(), "");
}

TEST_F(OverlayStoreTest, RemovesTheRecordWhoseFileItDeletes) {
  world.set(u"kilnworks.tips.userdata.support", u"True");
  home.putUser({{u"mine", u"00001.opa"}});
  home.putLocal("a", {{u"theirs", u"00001.opa"}});
  open();
  EXPECT_TRUE(store->removeOverlay(u"00001.opa", true));
  EXPECT_THAT(records(), ElementsAre("mine=00001.opa"));
  EXPECT_TRUE(std::filesystem::exists(home.userFolder() / "00001.opa"));
  EXPECT_TRUE(std::filesystem::exists(home.userFolder() / "00001.bmp"));
  EXPECT_FALSE(std::filesystem::exists(home.localFolder("a") / "00001.opa"));
  store->save();
  EXPECT_EQ(home.userIndex(), recordBytes(u"mine", u"00001.opa"));
  EXPECT_EQ(bytesOf(OverlayHome::index(home.localFolder("a"))), "");
}

TEST_F(OverlayStoreTest, RemovesEveryRecordOfTheFileThatItDeletes) {
  home.putUser({{u"one", u"00001.opa"}, {u"again", u"00001.opa"}, {u"two", u"00002.opa"}});
  open();
  store->removeOverlay(u"00001.opa", false);
  store->save();
  EXPECT_EQ(home.userIndex(), recordBytes(u"two", u"00002.opa"));
}

// A disk that neither deletes nor moves the file of this name.
class KeepingDisk final : public ForwardingDisk {
 public:
  bool remove(const Path& file) override {
    refuse(file);
    return disk.remove(file);
  }
  void replace(const Path& from, const Path& to) override {
    refuse(from);
    disk.replace(from, to);
  }
  std::string kept;

 private:
  void refuse(const Path& file) const {
    if (file.filename() == kept)
      throw Files::DiskError(file, "deleted", std::make_error_code(std::errc::permission_denied));
  }
};

TEST(OverlayThatCannotBeDeleted, StaysInTheStore) {
  for (const char* kept : {"00001.opa", "00001.bmp"}) {
    OverlayHome home;
    home.putUser({{u"one", u"00001.opa"}, {u"two", u"00002.opa"}});
    KeepingDisk disk;
    OverlayStore world(home.folder.path, disk);
    const auto store = world.open();
    disk.kept = kept;
    EXPECT_THROW(store->removeOverlay(u"00001.opa", false), Kiln::Exception);
    EXPECT_THAT(OverlayStore::records(*store), ElementsAre("one=00001.opa", "two=00002.opa")) << kept;
    EXPECT_TRUE(std::filesystem::exists(home.userFolder() / "00001.opa")) << kept;
    store->save();
    EXPECT_EQ(listed(home.userIndex()).size(), 2U) << kept;
    disk.kept.clear();
    EXPECT_TRUE(store->removeOverlay(u"00001.opa", false)) << kept;
  }
}

TEST_F(OverlayStoreTest, RemovesNothingForAnUnknownName) {
  home.putUser({{u"one", u"00001.opa"}});
  open();
  for (const char16_t* name : {u"None", u"Multiple", u"99999.opa", u"", u"one"})
    EXPECT_FALSE(store->removeOverlay(name, false));
  EXPECT_THAT(world.deletions, IsEmpty());
  EXPECT_EQ(store->count(), 1);
}

TEST_F(OverlayStoreTest, ExportsEveryOverlayWithItsThumbnailAndOneIndex) {
  world.set(u"kilnworks.tips.userdata.support", u"True");
  home.putUser({{u"mine", u"00001.opa"}});
  home.putLocal("a", {{u"theirs", u"00002.opa"}});
  std::filesystem::remove(home.localFolder("a") / "00002.bmp");
  const auto to = home.folder.path / "exported";
  std::filesystem::create_directory(to);
  open().exportTo(world.host.path(to.u16string()));
  EXPECT_EQ(bytesOf(OverlayHome::index(to)), recordBytes(u"mine", u"00001.opa") + recordBytes(u"theirs", u"00002.opa"));
  EXPECT_EQ(bytesOf(to / "00001.opa"), "00001.opa");
  EXPECT_EQ(bytesOf(to / "00001.bmp"), "thumbnail");
  EXPECT_EQ(bytesOf(to / "00002.opa"), "00002.opa");
  EXPECT_FALSE(std::filesystem::exists(to / "00002.bmp"));
  EXPECT_EQ(world.writes.back(), "exported/ovlNmFl.flo");
}

TEST_F(OverlayStoreTest, ExportsTwoOverlaysOfOneFileNameAsTwo) {
  world.set(u"kilnworks.tips.userdata.support", u"True");
  home.putUser({{u"mine", u"00001.opa"}});
  home.putLocal("a", {{u"theirs", u"00001.opa"}});
  Testing::writeFile(home.localFolder("a") / "00001.opa", "the other");
  Testing::writeFile(home.localFolder("a") / "00001.bmp", "the other's thumbnail");
  const auto to = home.folder.path / "exported";
  std::filesystem::create_directory(to);
  open().exportTo(world.host.path(to.u16string()));
  const auto entries = readIndex(bytesOf(OverlayHome::index(to)));
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(bytesOf(to / entries[0].fileName), "00001.opa");
  EXPECT_EQ(bytesOf(to / entries[1].fileName), "the other");
  EXPECT_EQ(bytesOf(to / thumbnailOf(entries[0].fileName)), "thumbnail");
  EXPECT_EQ(bytesOf(to / thumbnailOf(entries[1].fileName)), "the other's thumbnail");
}

TEST_F(OverlayStoreTest, ExportsTwoFileNamesThatDifferOnlyInCaseAsTwoThatDoNot) {
  world.set(u"kilnworks.tips.userdata.support", u"True");
  home.putUser({{u"mine", u"a.opa"}});
  home.putLocal("a", {{u"theirs", u"A.opa"}});
  const auto to = home.folder.path / "exported";
  std::filesystem::create_directory(to);
  open().exportTo(world.host.path(to.u16string()));
  EXPECT_THAT(listed(bytesOf(OverlayHome::index(to))), ElementsAre("mine=a.opa", IsNew("theirs")));
}

TEST_F(OverlayStoreTest, ExportsNoOverlayThatIsStillToBeWritten) {
  home.putUser({{u"mine", u"00001.opa"}});
  const auto to = home.folder.path / "exported";
  std::filesystem::create_directory(to);
  open().addOverlay(u"new");
  store->exportTo(world.host.path(to.u16string()));
  EXPECT_EQ(bytesOf(OverlayHome::index(to)), recordBytes(u"mine", u"00001.opa"));
  using Entries = std::filesystem::directory_iterator;
  EXPECT_EQ(std::distance(Entries(to), Entries()), 3) << "the index, the overlay, its thumbnail";
}

}  // namespace
