// Two stores on one home, as in two processes.
#include "store_world.h"
#include "tests/files/forwarding_disk.h"

#include <gmock/gmock.h>

namespace {

using namespace Effect;
using testing::HasSubstr;
using Names = StoreWorld::Names;

class TwoStores : public testing::Test {
 protected:
  TwoStores() {
    home.putUserFile(watermarkFile(element("WM_1", {{"label", "one"}, {"value", "WM_1"}}) +
                                   element("WM_2", {{"label", "two"}, {"value", "WM_2"}})));
    ours = world.open();
    theirs = other.open();
  }

  Names names() { return world.namesIn(world.userFile()); }

  static void rename(Watermarks& store, std::u16string_view id, std::u16string_view name) {
    const Node edited = store.record(id)->clone();
    setField(*edited, Field::stylename, name);
    store.updateRecord(id, edited);
  }

  Home home;
  StoreWorld world{home.folder.path};
  StoreWorld other{home.folder.path};
  Kiln::SmartPtr<Watermarks> ours;
  Kiln::SmartPtr<Watermarks> theirs;
};

TEST_F(TwoStores, WhatOneAddsIsNotLostThroughTheOther) {
  const std::string first = Formats::toUtf8(world.add(*ours, u"ours"));
  const std::string second = Formats::toUtf8(other.add(*theirs, u"theirs"));
  EXPECT_EQ(names(),
            (Names{{"0", "$IDS_NONE;"}, {"WM_1", "one"}, {"WM_2", "two"}, {first, "ours"}, {second, "theirs"}}));
  world.add(*ours, u"more");
  EXPECT_EQ(names().size(), 6U);
}

TEST_F(TwoStores, WhatOneRemovesStaysRemoved) {
  ours->removeRecord(u"WM_1");
  other.add(*theirs, u"theirs");
  EXPECT_FALSE(names().contains("WM_1"));
  EXPECT_FALSE(theirs->record(u"WM_1"));
}

TEST_F(TwoStores, WhatOneEditsStaysAsItIsThere) {
  rename(*ours, u"WM_1", u"one by us");
  rename(*theirs, u"WM_2", u"two by them");
  EXPECT_EQ(names(), (Names{{"0", "$IDS_NONE;"}, {"WM_1", "one by us"}, {"WM_2", "two by them"}}));
}

TEST_F(TwoStores, OfARecordThatBothChangeTheLastChangeCounts) {
  rename(*ours, u"WM_1", u"by us");
  rename(*theirs, u"WM_1", u"by them");
  EXPECT_EQ(names().at("WM_1"), "by them");
}

TEST_F(TwoStores, ARecordThatOneEditsAndTheOtherRemovesGoesByTheLast) {
  ours->removeRecord(u"WM_1");
  rename(*theirs, u"WM_1", u"by them");
  EXPECT_EQ(names().at("WM_1"), "by them");

  rename(*ours, u"WM_2", u"by us");
  theirs->removeRecord(u"WM_2");
  EXPECT_FALSE(names().contains("WM_2"));
}

TEST_F(TwoStores, AFileThatWasEmptiedOrDeletedMeanwhileIsWrittenWithWhatWeHave) {
  home.putUserFile("<Watermarks/>");
  world.add(*ours, u"ours");
  EXPECT_EQ(names().size(), 4U);

  std::filesystem::remove(world.userFile());
  other.add(*theirs, u"theirs");
  EXPECT_EQ(names().size(), 4U);
}

TEST_F(TwoStores, AFileThatWasDamagedMeanwhileIsSetAside) {
  home.putUserFile("<Watermarks><WM_9>");
  world.add(*ours, u"ours");
  EXPECT_EQ(names().size(), 4U);
  EXPECT_EQ(bytesOf(home.folder.path / "user" / "ZVeffect.damaged-1.xml"), "<Watermarks><WM_9>");
  ASSERT_EQ(world.face.failures.size(), 1U);
  EXPECT_THAT(world.face.failures[0], HasSubstr("ZVeffect.damaged-1.xml"));
}

TEST_F(TwoStores, ARecordOfTheirsThatClaimsTheNoneRecordsIdIsNotTakenUp) {
  home.putUserFile(watermarkFile(element("_x0030_", {{"label", "trap"}, {"value", "0"}}) +
                                 element("WM_1", {{"label", "one"}, {"value", "WM_1"}})));
  world.add(*ours, u"ours");
  EXPECT_EQ(fieldText(*ours->record(u"0"), Field::stylename).view(), u"$IDS_NONE;");
  EXPECT_EQ(names().at("0"), "$IDS_NONE;");
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

class BusyHome : public testing::Test {
 protected:
  BusyHome() {
    home.putUserFile(watermarkFile(element("WM_1", {{"label", "one"}, {"value", "WM_1"}}) +
                                   element("WM_2", {{"label", "two"}, {"value", "WM_2"}})));
    ours = world.open();
    theirs = other.open();
  }

  Home home;
  BusyDisk disk;
  StoreWorld world{home.folder.path, disk};
  StoreWorld other{home.folder.path};
  Kiln::SmartPtr<Watermarks> ours;
  Kiln::SmartPtr<Watermarks> theirs;
};

TEST_F(BusyHome, LosesNoRecordThatIsAddedBetweenTheReadingAndTheReplacingOfItsFile) {
  std::string second;
  disk.meanwhile = [&] { second = Formats::toUtf8(other.add(*theirs, u"theirs")); };
  const std::string first = Formats::toUtf8(world.add(*ours, u"ours"));
  EXPECT_EQ(world.namesIn(world.userFile()),
            (Names{{"0", "$IDS_NONE;"}, {"WM_1", "one"}, {"WM_2", "two"}, {first, "ours"}, {second, "theirs"}}));
  EXPECT_TRUE(ours->hasName(u"theirs"));
  EXPECT_TRUE(world.face.failures.empty());
}

TEST_F(BusyHome, BringsNoRecordBackThatIsRemovedBetweenTheReadingAndTheReplacingOfItsFile) {
  disk.meanwhile = [&] { theirs->removeRecord(u"WM_1"); };
  const std::string first = Formats::toUtf8(world.add(*ours, u"ours"));
  EXPECT_EQ(world.namesIn(world.userFile()), (Names{{"0", "$IDS_NONE;"}, {"WM_2", "two"}, {first, "ours"}}));
}

TEST_F(BusyHome, LosesNoRecordToTheBuiltInOnesOfAFirstOpening) {
  const Home fresh;
  BusyDisk busy;
  StoreWorld first(fresh.folder.path, busy);
  StoreWorld second(fresh.folder.path);
  busy.meanwhile = [&] { second.add(*second.open(), u"theirs"); };
  const auto store = first.open();
  EXPECT_TRUE(store->hasName(u"theirs"));
  EXPECT_EQ(first.namesIn(first.userFile()).size(), 7U);
  EXPECT_TRUE(first.face.failures.empty());
}

TEST_F(BusyHome, RevertsAChangeWhileAnotherProgramHasTheHome) {
  world.files.guard->longestWait = {};
  {
    const Files::HomeLock lock(Files::realDisk(), home.folder.path);
    EXPECT_THROW(world.add(*ours, u"ours"), Kiln::Exception);
    EXPECT_FALSE(ours->hasName(u"ours"));
  }
  world.add(*ours, u"ours");
  EXPECT_EQ(world.namesIn(world.userFile()).size(), 4U);
}

// A record of that id that they add elsewhere is ours for as long as its own file may have it.
TEST(TwoStoresOnLocalData, TakeUpARecordOfAnotherFileOnlyWhenItHasLeftThat) {
  for (const auto& [userFile, name] :
       {std::pair(oneRecord("WM_1", "mine"), "mine"), std::pair(oneRecord("WM_2", "other"), "theirs"),
        std::pair(std::string("damaged"), "mine"), std::pair(std::string(), "theirs")}) {
    Home home;
    home.putUserFile(oneRecord("WM_1", "mine"));
    home.putLocalFile("a", oneRecord("WM_a", "from a"));
    StoreWorld world(home.folder.path);
    const auto ours = world.open();
    home.putLocalFile("a", watermarkFile(element("WM_1", {{"label", "theirs"}, {"value", "WM_1"}}) +
                                         element("WM_a", {{"label", "from a"}, {"value", "WM_a"}})));
    if (userFile.empty())
      std::filesystem::remove(world.userFile());
    else
      home.putUserFile(userFile);
    ours->removeRecord(u"WM_a");
    EXPECT_EQ(Formats::toUtf8(fieldText(*ours->record(u"WM_1"), Field::stylename).view()), name) << userFile;
  }
}

TEST(TwoStoresOnLocalData, KnowDownloadedRecordsByTheIdsThatTheStoresWrote) {
  Home home;
  home.putLocalFile("a", watermarkFile(element("WM_1", {{"label", "one"}, {"value", "WM_1"}}) +
                                       element("WM_2", {{"label", "two"}, {"value", "WM_2"}}) +
                                       element("WM_3", {{"label", "three"}, {"value", "WM_3"}})));
  StoreWorld world(home.folder.path);
  StoreWorld other(home.folder.path);
  for (StoreWorld* each : {&world, &other}) each->set(u"kilnworks.tips.userdata.support", u"True");
  const auto ours = world.open();
  const auto theirs = other.open();
  theirs->removeRecord(u"WM_1_G");
  ours->removeRecord(u"WM_2_G");
  EXPECT_EQ(world.namesIn(world.localFile("a")), (Names{{"0", "$IDS_NONE;"}, {"WM_3_G", "three"}}));
  EXPECT_FALSE(ours->record(u"WM_1_G"));
}

TEST(TwoStoresOnLocalData, TakeUpWhatIsAddedToTheUsersFileAsNotDownloaded) {
  Home home;
  home.putUserFile(oneRecord("WM_1", "one"));
  StoreWorld world(home.folder.path);
  world.set(u"kilnworks.tips.userdata.support", u"True");
  const auto ours = world.open();
  home.putUserFile(watermarkFile(element("WM_1", {{"label", "one"}, {"value", "WM_1"}}) +
                                 element("WM_2", {{"label", "two"}, {"value", "WM_2"}})));
  ours->removeRecord(u"WM_1");
  EXPECT_THAT(world.list(*ours), testing::ElementsAre("0=None", "WM_2=two"));
}

TEST(TwoStoresOnLocalData, TakeUpWhatEachOtherAdds) {
  Home home;
  home.putLocalFile("a", watermarkFile(element("WM_1", {{"label", "one"}, {"value", "WM_1"}}) +
                                       element("WM_2", {{"label", "two"}, {"value", "WM_2"}})));
  StoreWorld world(home.folder.path);
  world.set(u"kilnworks.tips.userdata.support", u"True");
  const auto ours = world.open();
  home.putLocalFile("a", watermarkFile(element("WM_1", {{"label", "one"}, {"value", "WM_1"}}) +
                                       element("WM_2", {{"label", "two"}, {"value", "WM_2"}}) +
                                       element("WM_3", {{"label", "three"}, {"value", "WM_3"}})));
  ours->removeRecord(u"WM_1_G");
  EXPECT_EQ(world.namesIn(world.localFile("a"), Field::value),
            (Names{{"0", ""}, {"WM_2_G", "WM_2"}, {"WM_3_G", "WM_3"}}));
  EXPECT_THAT(world.list(*ours), testing::Contains("WM_3_G=three*"));
  EXPECT_FALSE(ours->hasName(u"three"));
}

TEST(TwoStoresOnLocalData, ADamagedFileOfTheirsIsNotWrittenOver) {
  Home home;
  home.putLocalFile("a", oneRecord("WM_1", "one"));
  StoreWorld world(home.folder.path);
  const auto store = world.open();
  home.putLocalFile("a", "damaged");
  EXPECT_THROW(store->removeRecord(u"WM_1"), Kiln::Exception);
  EXPECT_EQ(bytesOf(world.localFile("a")), "damaged");
  EXPECT_TRUE(store->record(u"WM_1"));

  // Nor does it keep anything else from being saved.
  world.add(*store, u"Mine");
  EXPECT_TRUE(world.open()->hasName(u"Mine"));
}

}  // namespace
