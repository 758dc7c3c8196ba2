// The overlay store: reading, lookup and listing.
#include "overlay_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace Effect;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(OverlayStoreTest, OfAnEmptyHomeHasNothingAndWritesNothing) {
  EXPECT_EQ(open().count(), 0);
  EXPECT_THAT(list(), ElementsAre("None=$IDS_CMBWMARK_NONE;", "Multiple=$IDS_TWOOVERLAY;"));
  EXPECT_THAT(list(false), ElementsAre("None=$IDS_CMBWMARK_NONE;"));
  store->save();
  EXPECT_THAT(world.writes, IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(home.userFolder()));
}

TEST_F(OverlayStoreTest, OfAnEmptyIndexHasNothing) {
  home.putUser({});
  EXPECT_EQ(open().count(), 0);
}

TEST_F(OverlayStoreTest, ReadsItsRecordsInOrder) {
  home.putUser({{u"Zebra", u"00002.opa"}, {u"Apple", u"00001.opa"}});
  EXPECT_EQ(home.userIndex().size(), 308U);
  open();
  ASSERT_EQ(store->count(), 2);
  EXPECT_EQ(store->record(0).label, u"Zebra");
  EXPECT_EQ(store->record(0).disklabel, u"Zebra");
  EXPECT_EQ(store->record(0).diskpath, u"00002.opa");
  EXPECT_EQ(store->record(0).path, (home.userFolder() / "00002.opa").u16string());
  EXPECT_EQ(store->record(0).diskfile, (home.userFolder() / "ovlNmFl.flo").u16string());
  EXPECT_FALSE(store->record(0).downloaded);
  EXPECT_EQ(store->record(1).label, u"Apple");
}

TEST_F(OverlayStoreTest, LeavesOutARecordWhoseFileIsMissingUntilTheNextSaveDropsIt) {
  home.putUser({{u"one", u"00001.opa"}, {u"two", u"00002.opa"}});
  std::filesystem::remove(home.userFolder() / "00001.opa");
  open();
  EXPECT_THAT(records(), ElementsAre("two=00002.opa"));
  store->save();
  EXPECT_EQ(listed(home.userIndex()).size(), 2U);
  store->addOverlay(u"three");
  store->save();
  EXPECT_THAT(listed(home.userIndex()), ElementsAre("two=00002.opa", IsNew("three")));
}

TEST_F(OverlayStoreTest, LeavesOutARecordWhoseFileIsAFolder) {
  home.putUser({{u"one", u"00001.opa"}});
  std::filesystem::remove(home.userFolder() / "00001.opa");
  std::filesystem::create_directory(home.userFolder() / "00001.opa");
  EXPECT_EQ(open().count(), 0);
}

TEST_F(OverlayStoreTest, TakesFileNamesThatLeadElsewhereForStale) {
  home.putUser({{u"one", u"00001.opa"}});
  OverlayHome::putFile(home.folder.path / "profile", u"00002.opa");
  const auto sub = home.userFolder() / "sub";
  OverlayHome::putFile(sub, u"3.opa");
  Testing::writeFile(OverlayHome::index(home.userFolder()),
                     recordBytes(u"up", u"../00002.opa") + recordBytes(u"down", u"sub/3.opa") +
                         recordBytes(u"here", u".") + recordBytes(u"above", u"..") + recordBytes(u"none", u"") +
                         recordBytes(u"index", u"ovlNmFl.flo") + recordBytes(u"one", u"00001.opa"));
  open();
  EXPECT_THAT(records(), ElementsAre("one=00001.opa"));
}

TEST_F(OverlayStoreTest, LetsTheSecondOfOneNameReplaceTheFirst) {
  home.putUser({{u"same", u"00001.opa"}, {u"other", u"00002.opa"}, {u"same", u"00003.opa"}});
  open();
  EXPECT_THAT(records(), ElementsAre("same=00003.opa", "other=00002.opa"));
}

TEST_F(OverlayStoreTest, ReadsTheLocalDataByTheLastPartOfTheSettingsFolder) {
  world.set(u"kilnworks.pdlsettings.folder", u"deep/overlays");
  OverlayHome::put(home.folder.path / "profile" / "deep" / "overlays", {{u"mine", u"00001.opa"}});
  home.putLocal("a", {{u"theirs", u"00002.opa"}});
  open();
  EXPECT_THAT(records(), ElementsAre("mine=00001.opa", "theirs=00002.opa"));
  EXPECT_EQ(store->record(1).path, (home.localFolder("a") / "00002.opa").u16string());
}

TEST_F(OverlayStoreTest, ReadsNoLocalDataWithoutTheSetting) {
  home.putLocal("a", {{u"theirs", u"00002.opa"}});
  world.manager->settings->remove(u"kilnworks.user.localdata.path");
  EXPECT_EQ(open().count(), 0);
}

TEST_F(OverlayStoreTest, LetsLocalDataReplaceARecordOfItsNameWhileDownloadedDataIsNotKeptApart) {
  home.putUser({{u"same", u"00001.opa"}});
  home.putLocal("a", {{u"same", u"00002.opa"}});
  open();
  EXPECT_THAT(records(), ElementsAre("same=00002.opa"));
  EXPECT_EQ(store->record(0).diskfile, OverlayHome::index(home.localFolder("a")).u16string());
}

TEST_F(OverlayStoreTest, KeepsDownloadedRecordsBesideTheUsers) {
  world.set(u"kilnworks.tips.userdata.support", u"True");
  home.putUser({{u"same", u"00001.opa"}});
  home.putLocal("a", {{u"same", u"00001.opa"}, {u"theirs", u"00003.opa"}});
  open();
  EXPECT_THAT(records(), ElementsAre("same=00001.opa", "same=00001.opa*", "theirs=00003.opa*"));
  EXPECT_THAT(list(), ElementsAre("None=$IDS_CMBWMARK_NONE;", "Multiple=$IDS_TWOOVERLAY;", "00001.opa=same",
                                  "00001.opa=same icon red marked", "00003.opa=theirs icon red marked"));
  EXPECT_THAT(list(false, false), ElementsAre("None=$IDS_CMBWMARK_NONE;", "00001.opa=same", "00001.opa=same marked",
                                              "00003.opa=theirs marked"));
  EXPECT_EQ(store->pathOf(u"00001.opa", false), (home.userFolder() / "00001.opa").u16string());
  EXPECT_EQ(store->pathOf(u"00001.opa", true), (home.localFolder("a") / "00001.opa").u16string());
  EXPECT_EQ(store->pathOf(u"00003.opa", false), u"None");
  EXPECT_EQ(store->findByLabel(u"same", true), 1);
  EXPECT_FALSE(store->hasLabel(u"theirs"));
}

TEST_F(OverlayStoreTest, ComparesNoFlagWhileDownloadedDataIsNotKeptApart) {
  home.putLocal("a", {{u"theirs", u"00003.opa"}});
  open();
  EXPECT_THAT(list(), ElementsAre("None=$IDS_CMBWMARK_NONE;", "Multiple=$IDS_TWOOVERLAY;", "00003.opa=theirs"));
  EXPECT_EQ(store->pathOf(u"00003.opa", true), (home.localFolder("a") / "00003.opa").u16string());
  EXPECT_EQ(store->pathOf(u"00003.opa", false), (home.localFolder("a") / "00003.opa").u16string());
}

TEST_F(OverlayStoreTest, FindsLabelsAndFileNamesExactly) {
  home.putUser({{u"Letterhead", u"00001.opa"}});
  open();
  EXPECT_EQ(store->findByLabel(u"Letterhead", false), 0);
  EXPECT_EQ(store->findByLabel(u"letterhead", false), -1);
  EXPECT_EQ(store->findByLabel(u"Letterhead", true), -1);
  EXPECT_EQ(store->findByDiskPath(u"00001.opa"), 0);
  EXPECT_EQ(store->pathOf(u"00001.OPA", false), u"None");
}

TEST_F(OverlayStoreTest, CannotFindAnUnknownFileName) {
  open();
  try {
    store->findByDiskPath(u"0é\U0001F600.opa");
    FAIL();
  } catch (const Kiln::Exception& problem) {
    EXPECT_STREQ(problem.what(), "Cannot find overlay 0\xC3\xA9\xF0\x9F\x98\x80.opa");
  }
}

TEST_F(OverlayStoreTest, IsMergedBySeveralFoldersOrByTheMarkOrByItsMaker) {
  EXPECT_FALSE(open().isMerged());
  EXPECT_TRUE(open(true).isMerged());
  std::filesystem::create_directories(home.folder.path / "localdata" / "a");
  EXPECT_FALSE(open().isMerged());
  EXPECT_TRUE(open(true).isMerged()) << "one folder of local data takes nothing back";
  Testing::writeFile(home.folder.path / "localdata" / "~merge", "");
  EXPECT_TRUE(open().isMerged());
  std::filesystem::remove(home.folder.path / "localdata" / "~merge");
  std::filesystem::create_directories(home.folder.path / "localdata" / "b");
  EXPECT_TRUE(open().isMerged());
}

TEST_F(OverlayStoreTest, IsFullWithTwenty) {
  home.putUser(OverlayHome::forms(19));
  EXPECT_FALSE(open().isFull());
  home.putUser(OverlayHome::forms(20));
  EXPECT_TRUE(open().isFull());
  home.putUser(OverlayHome::forms(21));
  EXPECT_TRUE(open().isFull());
}

}  // namespace
