// Files that nobody meant to be read, and disks that do not take what is written.
#include "effect/watermark/numbers.h"
#include "store_world.h"
#include "tests/files/failing_disk.h"
#include "tests/support/growth.h"

#include <gmock/gmock.h>

namespace {

using namespace Effect;
using testing::ElementsAre;
using testing::EndsWith;
using Testing::growsLinearly;
using testing::HasSubstr;
using testing::SizeIs;
using Names = StoreWorld::Names;

std::filesystem::path damagedCopy(const Home& home, int number) {
  return home.folder.path / "user" / ("ZVeffect.damaged-" + std::to_string(number) + ".xml");
}

std::string repeated(std::string_view text, long times) {
  std::string all;
  for (long i = 0; i < times; ++i) all += text;
  return all;
}

const std::string entitiesOfEntities =
    "<!DOCTYPE w [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\">]>"
    "<Watermarks><WM_1><stylename>&c;</stylename></WM_1></Watermarks>";

const std::vector<std::string> damagedFiles = {"",
                                               "no XML at all",
                                               std::string(1000, '\0'),
                                               "<Watermarks><WM_1><stylename>Mine</stylename></WM_1>",
                                               "<Watermarks><WM_1>\x01</WM_1></Watermarks>",
                                               "<Watermarks>\xFF\xFE</Watermarks>",
                                               repeated("<a>", 100'000),
                                               entitiesOfEntities};

TEST_F(Store, SetsADamagedUsersFileAsideBeforeItSeedsANewOne) {
  for (const std::string& damaged : damagedFiles) {
    Home own;
    own.putUserFile(damaged);
    StoreWorld run(own.folder.path);
    EXPECT_EQ(run.list(*run.open()).size(), 6U);
    EXPECT_EQ(bytesOf(damagedCopy(own, 1)), damaged);
    EXPECT_THAT(run.writes, ElementsAre("user/ZVeffect.damaged-1.xml", "user/ZVeffect.xml", "user/ZVeffect.xml"));
    EXPECT_THAT(run.face.failures, ElementsAre(EndsWith("ZVeffect.damaged-1.xml.")));
    EXPECT_THAT(run.face.failures, ElementsAre(HasSubstr(". What was in it")));
  }
}

TEST_F(Store, SetsTheNextDamagedFileAsideUnderTheNextName) {
  home.putUserFile("first");
  world.open();
  home.putUserFile("second");
  world.open();
  EXPECT_EQ(bytesOf(damagedCopy(home, 1)), "first");
  EXPECT_EQ(bytesOf(damagedCopy(home, 2)), "second");
  home.putUserFile("first");
  world.open();
  EXPECT_FALSE(std::filesystem::exists(damagedCopy(home, 3)));
}

TEST_F(Store, ACopyOfADamagedFileTakesNoNameOfWhatCannotBeRead) {
  std::filesystem::create_directories(damagedCopy(home, 1));
  home.putUserFile("damaged");
  world.open();
  EXPECT_EQ(bytesOf(damagedCopy(home, 2)), "damaged");
}

TEST_F(Store, LeavesDamagedLocalDataAloneAndReadsTheRest) {
  for (const std::string& damaged : damagedFiles) {
    home.putLocalFile("a", damaged);
    home.putLocalFile("b", oneRecord("WM_b", "from b"));
    const auto store = world.open();
    EXPECT_TRUE(store->hasName(u"from b"));
    world.add(*store, u"Mine");
    EXPECT_EQ(bytesOf(world.localFile("a")), damaged);
  }
  EXPECT_TRUE(world.face.failures.empty());
}

TEST_F(Store, IgnoresADamagedMarkerAndFilesThatAreNoFolders) {
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  Testing::writeFile(home.folder.path / "localdata" / "b", "a file");
  EXPECT_TRUE(world.open()->hasName(u"from a"));
}

TEST_F(Store, AUsersFileThatIsAFolderIsNeverWrittenOver) {
  std::filesystem::create_directories(world.userFile() / "inside");
  const auto store = world.open();
  ASSERT_THAT(world.face.failures, SizeIs(1));
  EXPECT_THAT(world.face.failures[0], HasSubstr("It is not written over"));
  try {
    world.add(*store, u"Mine");
    FAIL() << "was written over";
  } catch (const Kiln::Exception& problem) {
    EXPECT_EQ(problem.what(), world.face.failures[0]);
  }
  EXPECT_FALSE(store->hasName(u"Mine"));
  EXPECT_TRUE(std::filesystem::exists(world.userFile() / "inside"));

  // Not even when it is gone, as long as the store lives.
  std::filesystem::remove_all(world.userFile());
  EXPECT_THROW(world.add(*store, u"Mine"), Kiln::Exception);
  EXPECT_FALSE(std::filesystem::exists(world.userFile()));
  world.add(*world.open(), u"Mine");
  EXPECT_TRUE(world.open()->hasName(u"Mine"));
}

TEST_F(Store, AMissingUsersFolderIsTold) {
  std::filesystem::remove(home.folder.path / "user");
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  const auto store = world.open();
  EXPECT_THAT(world.list(*store), ElementsAre("0=None", "1=Confidential", "2=Draft", "3=Copy", "4=Urgent",
                                              "5=For internal use", "WM_a=from a"));
  EXPECT_THAT(world.face.failures, ElementsAre(HasSubstr("ZVeffect.xml")));
  EXPECT_THROW(world.add(*store, u"Mine"), Kiln::Exception);
  EXPECT_FALSE(store->hasName(u"Mine"));
}

TEST_F(Store, AUsersFolderThatIsAFileIsTold) {
  std::filesystem::remove(home.folder.path / "user");
  Testing::writeFile(home.folder.path / "user", "a file");
  EXPECT_THAT(world.list(*world.open()), ElementsAre("0=None"));
  EXPECT_THAT(world.face.failures, SizeIs(1));
  EXPECT_EQ(bytesOf(home.folder.path / "user"), "a file");
}

TEST_F(Store, WithoutAUsersFolderInTheSettingsWritesNowhere) {
  world.manager->settings->remove(u"kilnworks.user.path");
  const auto store = world.open();
  EXPECT_THAT(world.face.failures,
              ElementsAre("Watermarks cannot be kept: the host setting kilnworks.user.path is empty."));
  EXPECT_THROW(world.add(*store, u"Mine"), Kiln::Exception);
  EXPECT_TRUE(world.writes.empty());
}

// Every operation of the disk fails in turn; the one after it works again.
TEST(AFailingDisk, WhileOpeningIsToldAndKeepsNothingFromOpening) {
  for (int failing = 1;; ++failing) {
    Home home;
    home.putLocalFile("a", oneRecord("WM_a", "from a"));
    FailingDisk disk(Files::realDisk());
    disk.failing = failing;
    StoreWorld world(home.folder.path, disk);
    world.open();
    if (disk.operations < failing) break;
    if (world.face.failures.empty()) {
      // Only a look at a file can fail without being told: then it counts as different, or as nobody's to mend.
      EXPECT_TRUE(StoreWorld(home.folder.path).open()->hasName(u"from a"));
    } else {
      EXPECT_THAT(world.face.failures, SizeIs(1));
      EXPECT_THAT(world.face.failures[0], HasSubstr("the disk is full"));
    }
    StoreWorld later(home.folder.path);
    EXPECT_EQ(later.list(*later.open()).size(), 7U) << failing;
    ASSERT_LT(failing, 200);
  }
}

TEST(AFailingDisk, WhileChangingLeavesTheStoreAsItWas) {
  for (int failing = 1;; ++failing) {
    Home home;
    FailingDisk disk(Files::realDisk());
    StoreWorld world(home.folder.path, disk);
    const auto store = world.open();
    const auto before = world.list(*store);
    const std::string bytes = bytesOf(world.userFile());
    disk.operations = 0;
    disk.failing = failing;
    bool failed = false;
    try {
      store->changeTogether([&](Watermarks::Changes& changes) {
        changes.remove(u"1");
        changes.add(world.newRecord(*store, u"Mine"));
        changes.update(u"2", world.newRecord(*store, u"Two"));
      });
    } catch (const Kiln::Exception&) {
      failed = true;
    }
    if (disk.operations < failing) break;
    if (failed) {
      EXPECT_EQ(world.list(*store), before) << failing;
    }
    // When only the very last step failed, the flush of the folder, the change is on the disk all the same.
    if (failed && bytesOf(world.userFile()) == bytes) {
      // What could not be saved is not saved later either.
      world.add(*store, u"Later");
      const Names names = world.namesIn(world.userFile());
      EXPECT_EQ(names.at("1"), "$IDS_WM_CONFIDENTIAL;") << failing;
      EXPECT_EQ(names.at("2"), "$IDS_WM_DRAFT;");
      EXPECT_EQ(names.size(), 7U);
    }
    ASSERT_LT(failing, 100);
  }
}

// A disk that nothing can be written to, or on which a file of local data fails when it is read a given time.
class BadDisk final : public SteppingDisk {
 public:
  using SteppingDisk::SteppingDisk;

  std::string read(const Path& file, std::size_t limit) override {
    if (file.parent_path().filename() == "a" && ++reads == failingRead) fail(file);
    return disk.read(file, limit);
  }

  bool isReadOnly = false;
  int failingRead = 0;  // 0 for none

 private:
  void step(const Path& path) override {
    if (isReadOnly) fail(path);
  }
  static void fail(const Path& path) {
    throw Files::DiskError(path, "used", std::make_error_code(std::errc::io_error));
  }

  int reads = 0;
};

TEST(ABadDisk, WhileOpeningIsToldWhereAFileCannotBeBroughtIntoForm) {
  Home home;
  home.putUserFile(oneRecord("WM_1", "Mine"));
  BadDisk disk(Files::realDisk());
  disk.isReadOnly = true;
  StoreWorld world(home.folder.path, disk);
  EXPECT_THAT(world.list(*world.open()), ElementsAre("0=None", "WM_1=Mine"));
  EXPECT_THAT(world.face.failures, ElementsAre(HasSubstr("ZVeffect.xml")));
}

TEST(ABadDisk, ThatNothingCanBeWrittenToHasTheBuiltInWatermarks) {
  Home home;
  BadDisk disk(Files::realDisk());
  disk.isReadOnly = true;
  StoreWorld world(home.folder.path, disk);
  const auto store = world.open();
  EXPECT_THAT(world.list(*store),
              ElementsAre("0=None", "1=Confidential", "2=Draft", "3=Copy", "4=Urgent", "5=For internal use"));
  EXPECT_THAT(world.face.failures, ElementsAre(HasSubstr("ZVeffect.xml")));
  EXPECT_THROW(world.add(*store, u"Mine"), Kiln::Exception);
  EXPECT_FALSE(store->hasName(u"Mine"));

  disk.isReadOnly = false;
  world.add(*store, u"Mine");
  EXPECT_THAT(world.list(*world.open()), SizeIs(7));
}

TEST(ABadDisk, LeavesLocalDataThatCannotBeLookedAtAnewAsItWas) {
  Home home;
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  BadDisk disk(Files::realDisk());
  disk.failingRead = 2;
  StoreWorld world(home.folder.path, disk);
  EXPECT_TRUE(world.open()->hasName(u"from a"));
  EXPECT_EQ(bytesOf(world.localFile("a")), oneRecord("WM_a", "from a"));
  EXPECT_THAT(world.face.failures, SizeIs(0));
}

TEST_F(Store, AChangeThatIsGivenUpDidNotHappen) {
  const auto store = world.open();
  const auto before = world.list(*store);
  EXPECT_THROW(store->changeTogether([&](Watermarks::Changes& changes) {
    changes.remove(u"1");
    changes.add(world.newRecord(*store, u"Mine"));
    throw std::runtime_error("given up");
  }),
               std::runtime_error);
  EXPECT_EQ(world.list(*store), before);
  world.add(*store, u"Later");
  EXPECT_EQ(world.namesIn(world.userFile()).at("1"), "$IDS_WM_CONFIDENTIAL;");
  EXPECT_FALSE(world.open()->hasName(u"Mine"));
}

// When it got as far as the file, it is there; else it is not, and does not come with what is saved later.
TEST_F(Store, AChangeThatRunsOutOfMemoryIsNotMadeLater) {
  home.putUserFile(oneRecord("WM_1", "one"));
  const auto store = world.open();
  int thrown = 0;
  bool isThrown = true;
  for (long blocks = 0; isThrown; ++blocks) {
    ASSERT_LT(blocks, 10'000);
    const std::u16string name = u"name " + decimalText(blocks);
    const Node record = world.newRecord(*store, name);
    isThrown = false;
    Refhost::heap().failAfter(blocks);
    try {
      store->addRecord(record);
    } catch (const std::exception&) {
      isThrown = true;
    }
    Refhost::heap().failAfter(-1);
    const auto isOnDisk = [&] { return StoreWorld(home.folder.path).open()->hasName(name); };
    const bool wasOnDisk = isOnDisk();
    if (isThrown) ++thrown;
    if (blocks % 2 == 0) {
      store->save();
    } else {
      const Node later = store->record(u"WM_1")->clone();
      setField(*later, Field::angle, decimalText(blocks));
      store->updateRecord(u"WM_1", later);
    }
    EXPECT_EQ(isOnDisk(), wasOnDisk) << blocks;
    if (blocks % 2 != 0) {
      EXPECT_EQ(store->hasName(name), wasOnDisk) << blocks;
    }
    store->removeRecord(store->findIdByName(name));
  }
  EXPECT_GT(thrown, 0);
}

TEST_F(Store, AMergedCopyThatCannotBeWrittenDoesNotKeepAUserFromSaving) {
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  std::filesystem::create_directories(world.mergedCopy());
  const auto store = world.open();
  world.add(*store, u"Mine");
  world.add(*store, u"Another");
  EXPECT_THAT(world.face.failures, SizeIs(0));
  EXPECT_EQ(world.namesIn(world.userFile()).size(), 8U);
}

TEST_F(Store, AHundredThousandAndOneRecordsAreTooMany) {
  std::string records;
  for (int i = 0; i < 100'001; ++i) records += "<a/>";
  home.putUserFile(watermarkFile(records));
  EXPECT_EQ(world.list(*world.open()).size(), 6U);
  EXPECT_THAT(world.face.failures,
              ElementsAre(testing::StartsWith("A watermark file holds more than 100000 records.")));
}

// One more than the store takes, more than a document may have, and more elements in fewer records.
TEST_F(Store, SetsAFileOfTooManyRecordsAside) {
  int copies = 0;
  for (const std::string& records :
       {repeated("<a/>", 100'001), repeated("<a/>", 1'000'001), repeated("<a><stylename>x</stylename></a>", 510'000)}) {
    const std::string bytes = watermarkFile(records);
    home.putUserFile(bytes);
    EXPECT_EQ(world.list(*world.open()).size(), 6U);
    EXPECT_EQ(bytesOf(damagedCopy(home, ++copies)), bytes);
  }
}

TEST_F(Store, ReadsARecordOfManyFieldsInTimeLinearInThem) {
  const auto reading = [this](int count) {
    home.putUserFile(
        watermarkFile("<WM_1><label>Mine</label><value>WM_1</value>" + repeated("<a/>", count) + "</WM_1>"));
    return [this] { EXPECT_TRUE(world.open()->hasName(u"Mine")); };
  };
  EXPECT_TRUE(growsLinearly(20'000, reading));
  reading(900'000)();
}

TEST_F(Store, ReadsAndFindsAHundredThousandRecordsInTimeLinearInThem) {
  EXPECT_TRUE(growsLinearly(10'000, [this](int count) {
    std::string elements;
    for (int i = 0; i < count; ++i) {
      const std::string id = "WM_" + std::to_string(i);
      elements += element(id, {{"stylename", "name " + id}, {"value", id}});
    }
    home.putUserFile(watermarkFile(elements));
    return [this, count] {
      const auto store = world.open();
      for (int i = 0; i < count; ++i) ASSERT_TRUE(store->hasName(u"name WM_" + decimalText(i)));
      EXPECT_EQ(world.list(*store).size(), static_cast<std::size_t>(count) + 1);
      EXPECT_TRUE(store->isFull());
    };
  }));
}

}  // namespace
