// Records of several files, or of one, with the same id or the same name: none is taken out of its file by reading.
#include "store_world.h"
#include "tests/files/failing_disk.h"

#include <gmock/gmock.h>

#include <regex>

namespace {

using namespace Effect;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using Names = StoreWorld::Names;

std::string record(const std::string& id, const std::string& name, const std::string& angle) {
  return element(id, {{"label", name}, {"value", id}, {"angle", angle}});
}

std::string file(const std::string& id, const std::string& name, const std::string& angle) {
  return watermarkFile(record(id, name, angle));
}

constexpr const char16_t* supports[] = {u"False", u"True"};

TEST_F(Store, LeavesAFileAsItIsWhoseRecordsALaterOneOverrules) {
  for (const char16_t* support : supports) {
    world.set(u"kilnworks.tips.userdata.support", support);
    home.putUserFile(oneRecord("WM_1", "Mine"));
    for (const bool hasOneId : {false, true}) {
      const std::string first = file("WM_7", "Draft", "10");
      home.putLocalFile("a", first);
      home.putLocalFile("b", file(hasOneId ? "WM_7" : "WM_8", "Draft", "20"));
      world.open();
      world.open();
      EXPECT_THAT(bytesOf(world.localFile("a")), HasSubstr("<angle>10</angle>"));
      if (hasOneId) {
        EXPECT_EQ(bytesOf(world.localFile("a")), first);
      }
      std::filesystem::remove_all(home.folder.path / "localdata" / "b");
      const auto store = world.open();
      EXPECT_THAT(world.list(*store, false), Contains(HasSubstr("=Draft")));
      std::filesystem::remove_all(home.folder.path / "localdata" / "a");
    }
  }
  EXPECT_THAT(world.face.failures, IsEmpty());
}

TEST_F(Store, LeavesTheUsersFileAsItIsWhereLocalDataOverrulesIt) {
  const std::string bytes = file("WM_1", "Mine", "10");
  home.putUserFile(bytes);
  home.putLocalFile("a", file("WM_a", "Mine", "20"));
  const auto store = world.open();
  EXPECT_THAT(world.list(*store), ElementsAre("0=None", "WM_1=Mine"));
  EXPECT_EQ(fieldText(*store->record(u"WM_1"), Field::angle).view(), u"20");
  EXPECT_EQ(bytesOf(world.userFile()), bytes);

  // Nor do later changes take it out.
  world.add(*store, u"Another");
  EXPECT_EQ(world.namesIn(world.userFile(), Field::angle).at("WM_1"), "10");
  std::filesystem::remove_all(home.folder.path / "localdata" / "a");
  EXPECT_EQ(fieldText(*world.open()->record(u"WM_1"), Field::angle).view(), u"10");
}

TEST_F(Store, ShowsBothOfTwoRecordsOfOneIdAndDifferentNames) {
  for (const char16_t* support : supports) {
    world.set(u"kilnworks.tips.userdata.support", support);
    const std::string users = file("WM_1", "Mine", "10");
    home.putUserFile(users);
    home.putLocalFile("a", file("WM_1", "Theirs", "20"));
    home.putLocalFile("b", file("WM_1", "Others", "30"));
    const auto store = world.open();
    EXPECT_EQ(fieldText(*store->record(u"WM_1"), Field::stylename).view(), u"Mine");
    const auto list = world.list(*store, false);
    EXPECT_THAT(list, testing::SizeIs(4));
    for (const char* name : {"=Theirs", "=Others"}) EXPECT_THAT(list, Contains(HasSubstr(name)));

    // With the same ids at each opening, and after their files have been written.
    EXPECT_EQ(world.list(*world.open(), false), list);
    std::vector<std::u16string> ids;
    for (const std::string& line : list) ids.push_back(Formats::toUtf16(line.substr(0, line.find('='))));
    for (const auto& id : ids) {
      if (id == u"0") continue;
      const Node edited = store->record(id)->clone();
      setField(*edited, Field::fontsize, u"99");
      store->updateRecord(id, edited);
    }
    EXPECT_EQ(world.list(*world.open(), false), list);
    EXPECT_EQ(world.namesIn(world.userFile()), (Names{{"0", "$IDS_NONE;"}, {"WM_1", "Mine"}}));
    EXPECT_THAT(world.namesIn(world.localFile("a"), Field::value), Contains(Pair(testing::_, "WM_1")));
  }
}

TEST_F(Store, KeepsTheOverruledOneOfTwoRecordsWithOneNameInAFile) {
  home.putUserFile(
      watermarkFile(record("WM_a", "same", "10") + record("WM_b", "same", "20") + record("WM_c", "other", "30")));
  const std::string asItWas = bytesOf(world.userFile());
  auto store = world.open();
  EXPECT_EQ(bytesOf(world.userFile()), asItWas);
  for (int change = 0; change < 3; ++change) {
    EXPECT_EQ(fieldText(*store->record(u"WM_a"), Field::angle).view(), u"20");
    const Node edited = store->record(u"WM_c")->clone();
    setField(*edited, Field::fontsize, Formats::toUtf16(std::to_string(100 + change)));
    store->updateRecord(u"WM_c", edited);
    EXPECT_THAT(bytesOf(world.userFile()), HasSubstr("<angle>10</angle>"));
    EXPECT_THAT(world.list(*store), ElementsAre("0=None", "WM_a=same", "WM_c=other"));
    if (change == 1) store = world.open();
  }

  // Under another name, each has its own.
  const Node renamed = store->record(u"WM_a")->clone();
  setField(*renamed, Field::stylename, u"renamed");
  store->updateRecord(u"WM_a", renamed);
  const auto again = world.open();
  EXPECT_EQ(fieldText(*again->record(u"WM_a"), Field::stylename).view(), u"renamed");
  EXPECT_EQ(fieldText(*again->record(again->findIdByName(u"same")), Field::angle).view(), u"10");
}

TEST_F(Store, KeepsRecordsWithoutAUsableNameInTheirFile) {
  home.putUserFile(watermarkFile(element("WM_1", {{"stylename", ""}, {"label", "no name"}, {"value", "WM_1"}}) +
                                 record("WM_2", "Mine", "10")));
  const auto store = world.open();
  world.add(*store, u"Another");
  EXPECT_THAT(bytesOf(world.userFile()), HasSubstr("<label>no name</label>"));
  EXPECT_FALSE(store->record(u"WM_1"));
}

TEST_F(Store, DeletingANameDeletesWhatItOverruled) {
  home.putUserFile(oneRecord("WM_1", "Mine"));
  home.putLocalFile("a", file("WM_7", "Draft", "10"));
  home.putLocalFile("b", file("WM_8", "Draft", "20"));
  const auto store = world.open();
  EXPECT_TRUE(store->removeRecord(store->findIdByName(u"Draft")));
  for (const char* folder : {"a", "b"}) EXPECT_EQ(world.namesIn(world.localFile(folder)), (Names{{"0", "$IDS_NONE;"}}));
  EXPECT_FALSE(world.open()->hasName(u"Draft"));
  EXPECT_TRUE(world.open()->hasName(u"Mine"));
}

TEST_F(Store, ReplacingANameReplacesWhatItOverruled) {
  home.putUserFile(oneRecord("WM_1", "Mine"));
  home.putLocalFile("a", file("WM_7", "Draft", "10"));
  home.putLocalFile("b", file("WM_8", "Draft", "20"));
  const auto store = world.open();
  const std::u16string id = world.add(*store, u"Draft");
  const auto again = world.open();
  EXPECT_EQ(fieldText(*again->record(id), Field::sourceFile).view(), world.userFile().u16string());
  EXPECT_THAT(world.list(*again), testing::SizeIs(3));
}

TEST_F(Store, ADeletionThatCannotBeSavedKeepsWhatWasOverruled) {
  home.putUserFile(oneRecord("WM_1", "Mine"));
  const std::string first = file("WM_7", "Draft", "10");
  home.putLocalFile("a", first);
  home.putLocalFile("b", file("WM_8", "Draft", "20"));
  const auto store = world.open();
  home.putLocalFile("b", "damaged");
  EXPECT_THROW(store->removeRecord(store->findIdByName(u"Draft")), Kiln::Exception);
  EXPECT_TRUE(store->hasName(u"Draft"));
  world.add(*store, u"Another");
  EXPECT_THAT(bytesOf(world.localFile("a")), HasSubstr("<angle>10</angle>"));
}

TEST(ClashesOfTwoStores, LeaveARecordInAFileThatAnotherHasAddedUnderAKnownId) {
  for (const char* name : {"mine", "theirs"}) {
    Home home;
    home.putUserFile(oneRecord("WM_1", "mine"));
    home.putLocalFile("a", oneRecord("WM_a", "from a"));
    StoreWorld world(home.folder.path);
    const auto ours = world.open();
    home.putLocalFile("a", watermarkFile(record("WM_1", name, "33") + record("WM_a", "from a", "0")));
    ours->removeRecord(u"WM_a");
    EXPECT_THAT(bytesOf(world.localFile("a")), HasSubstr("<angle>33</angle>")) << name;
    EXPECT_EQ(fieldText(*ours->record(u"WM_1"), Field::stylename).view(), u"mine");
    world.add(*ours, u"later");
    EXPECT_THAT(bytesOf(world.localFile("a")), HasSubstr("<angle>33</angle>")) << name;
    EXPECT_EQ(world.namesIn(world.userFile()).at("WM_1"), "mine");
  }
}

TEST(ClashesOfTwoStores, LeaveARecordOfTheIdThatIsBeingChanged) {
  Home home;
  home.putUserFile(watermarkFile(record("WM_1", "mine", "0") + record("WM_2", "two", "0")));
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  StoreWorld world(home.folder.path);
  const auto ours = world.open();
  home.putLocalFile("a", watermarkFile(record("WM_1", "theirs", "33") + record("WM_a", "from a", "0")));
  ours->changeTogether([](Watermarks::Changes& changes) {
    changes.remove(u"WM_1");
    changes.remove(u"WM_a");
  });
  EXPECT_THAT(bytesOf(world.localFile("a")), HasSubstr("<angle>33</angle>"));
  EXPECT_THAT(bytesOf(world.userFile()), Not(HasSubstr("mine")));
  EXPECT_TRUE(world.open()->hasName(u"theirs"));
}

TEST(ClashesOfTwoStores, KnowOverruledRecordsAgain) {
  for (const char* id : {"WM_a", "WM_b"}) {
    Home home;
    home.putUserFile(watermarkFile(record("WM_a", "same", "10") + record(id, "same", "20")));
    StoreWorld world(home.folder.path);
    StoreWorld other(home.folder.path);
    const auto ours = world.open();
    const auto theirs = other.open();
    world.add(*ours, u"ours");
    other.add(*theirs, u"theirs");
    world.add(*ours, u"ours again");
    EXPECT_EQ(world.list(*ours), world.list(*world.open()));
    EXPECT_EQ(fieldText(*ours->record(u"WM_a"), Field::angle).view(), u"20");
    for (const char* angle : {"<angle>10<", "<angle>20<"}) EXPECT_THAT(bytesOf(world.userFile()), HasSubstr(angle));
  }
}

// A disk on which the local data cannot be written to.
class ReadOnlyLocalData final : public SteppingDisk {
 public:
  using SteppingDisk::SteppingDisk;

 private:
  void step(const Path& path) override {
    if (path.string().find("localdata") != std::string::npos)
      throw Files::DiskError(path, "written", std::make_error_code(std::errc::read_only_file_system));
  }
};

TEST(LocalDataThatIsReadOnly, IsReadWithoutAWordAndWithTheSameIdsAtEachOpening) {
  for (const char16_t* support : supports) {
    Home home;
    const std::string bytes = watermarkFile(
        element("x", {{"label", "no id"}}) + element("y", {{"label", "empty"}, {"value", ""}}) +
        element("z", {{"label", "one"}, {"value", "WM_z"}}) + element("z", {{"label", "two"}, {"value", "WM_z"}}));
    home.putLocalFile("a", bytes);
    home.putLocalFile("b", watermarkFile(element("x", {{"label", "also none"}})));
    ReadOnlyLocalData disk(Files::realDisk());
    std::vector<std::vector<std::string>> lists;
    for (int opening = 0; opening < 3; ++opening) {
      StoreWorld world(home.folder.path, disk);
      world.set(u"kilnworks.tips.userdata.support", support);
      const auto store = world.open();
      lists.push_back(world.list(*store, false));
      EXPECT_THAT(lists.back(), testing::SizeIs(11));
      EXPECT_EQ(lists.back(), lists.front());
      if (opening == 1) {
        const std::u16string id = world.add(*store, u"Mine");
        store->removeRecord(id);
      }
      EXPECT_THAT(world.face.failures, IsEmpty());
      EXPECT_FALSE(std::filesystem::exists(world.mergedCopy()));
    }
    EXPECT_EQ(bytesOf(home.folder.path / "localdata" / "a" / "ZVeffect.xml"), bytes);
  }
}

TEST_F(Store, GivesALocalRecordWithoutAnIdTheSameOneOnceItsFileIsWritten) {
  home.putLocalFile("a", watermarkFile(element("x", {{"label", "from a"}})));
  const std::u16string id = world.open()->findIdByName(u"from a");
  EXPECT_TRUE(id.starts_with(u"WM_"));
  EXPECT_THAT(world.namesIn(world.localFile("a")), Contains(Pair(Formats::toUtf8(id), "from a")));
  EXPECT_EQ(world.open()->findIdByName(u"from a"), id);

  world.set(u"kilnworks.tips.userdata.support", u"True");
  EXPECT_TRUE(world.open()->record(id + u"_G"));
  world.set(u"kilnworks.tips.userdata.support", u"False");
  EXPECT_EQ(world.open()->findIdByName(u"from a"), id);
}

TEST(IdInAFile, IsItsValueElseItsElementsNameWithoutTheEndingOfADownloadedOne) {
  EXPECT_EQ(idInFile(u"x", u"WM_1"), u"WM_1");
  EXPECT_EQ(idInFile(u"x", u"WM_1_G"), u"WM_1_G");
  for (const char16_t* none : {u"", u"0"}) {
    EXPECT_EQ(idInFile(u"WM_1", none), u"WM_1");
    EXPECT_EQ(idInFile(u"WM_1_G", none), u"WM_1");
  }
}

TEST(DerivedIds, AreTheSameForATextAndLookLikeTheOthers) {
  EXPECT_EQ(derivedRecordId(u"a"), derivedRecordId(u"a"));
  EXPECT_NE(derivedRecordId(u"a"), derivedRecordId(u"b"));
  const std::string id = Formats::toUtf8(derivedRecordId(u"a"));
  EXPECT_TRUE(std::regex_match(id, std::regex("WM(_[0-9A-F]+){5}"))) << id;
}

}  // namespace
