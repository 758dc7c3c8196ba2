// The store's output, byte by byte, and its location.
#include "effect/watermark/numbers.h"
#include "store_world.h"

#include <gmock/gmock.h>

namespace {

using namespace Effect;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Names = StoreWorld::Names;

const std::string noneElement = R"(  <_x0030_>
    <label>$IDS_NONE;</label>
    <stylename>$IDS_NONE;</stylename>
    <fontname>Arial</fontname>
    <fontsize>72</fontsize>
    <fontstyle>Regular</fontstyle>
    <colour>#808080</colour>
    <angle>0</angle>
    <positionX>C</positionX>
    <positionY>C</positionY>
    <printStyle>Solid</printStyle>
    <transparency>
      <intensity>0</intensity>
    </transparency>
  </_x0030_>
)";

std::string wholeFile(const std::string& elements) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Watermarks>\n" + noneElement + elements + "</Watermarks>\n";
}

const Names builtIn = {{"0", "$IDS_NONE;"},    {"1", "$IDS_WM_CONFIDENTIAL;"}, {"2", "$IDS_WM_DRAFT;"},
                       {"3", "$IDS_WM_COPY;"}, {"4", "$IDS_WM_URGENT;"},       {"5", "$IDS_WM_INTERNAL;"}};

TEST_F(Store, OfAFreshHomeCopiesTheBuiltInFileAndBringsItIntoForm) {
  world.open();
  EXPECT_THAT(world.writes, ElementsAre("user/ZVeffect.xml", "user/ZVeffect.xml"));
  EXPECT_EQ(world.namesIn(world.userFile()), builtIn);
  EXPECT_TRUE(world.face.failures.empty());
}

TEST_F(Store, CopiesTheBuiltInFileByteForByte) {
  std::string first;
  world.trace.listen([&](const Refhost::TraceEvent& event) {
    if (event.op == "write" && first.empty()) first = bytesOf(world.userFile());
  });
  world.open();
  EXPECT_EQ(first, bytesOf(std::filesystem::path(RESOURCES_FOLDER) / "effect" / "content" / "effect.xml"));
}

TEST_F(Store, BringsAUsersFileIntoTheWrittenFormAtOnce) {
  home.putUserFile(oneRecord("WM_1", "Mine"));
  world.open();
  EXPECT_EQ(bytesOf(world.userFile()), wholeFile(R"(  <WM_1>
    <label>Mine</label>
    <value>WM_1</value>
    <stylename>Mine</stylename>
    <fontname>Arial</fontname>
    <downloaded>False</downloaded>
  </WM_1>
)"));
  EXPECT_THAT(world.writes, ElementsAre("user/ZVeffect.xml"));
}

TEST_F(Store, WritesNothingWhereNothingWouldChange) {
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  home.putLocalFile("b", oneRecord("WM_b", "from b"));
  world.open();
  world.writes.clear();
  const auto store = world.open();
  store->save();
  EXPECT_TRUE(world.writes.empty());
}

TEST_F(Store, AUsersFileWithoutRecordsIsSeededAnew) {
  for (const char* empty : {"<Watermarks/>", "<Watermarks>words</Watermarks>", "<other/>"}) {
    home.putUserFile(empty);
    world.open();
    EXPECT_EQ(world.namesIn(world.userFile()), builtIn);
  }
  EXPECT_TRUE(world.face.failures.empty());
}

TEST_F(Store, AUsersFileWithTheNoneRecordAloneStaysAsItIs) {
  home.putUserFile(watermarkFile(element("_x0030_", {{"stylename", "$IDS_NONE;"}})));
  EXPECT_THAT(world.list(*world.open()), ElementsAre("0=None"));
  EXPECT_TRUE(world.writes.empty());
}

TEST_F(Store, EachChangeIsOnDiskWhenItReturns) {
  const auto store = world.open();
  Names expected = builtIn;
  const std::u16string id = world.add(*store, u"Mine");
  expected[Formats::toUtf8(id)] = "Mine";
  EXPECT_EQ(world.namesIn(world.userFile()), expected);

  const Node edited = store->record(id)->clone();
  setField(*edited, Field::stylename, u"Renamed");
  store->updateRecord(id, edited);
  expected[Formats::toUtf8(id)] = "Renamed";
  EXPECT_EQ(world.namesIn(world.userFile()), expected);

  store->removeRecord(id);
  EXPECT_EQ(world.namesIn(world.userFile()), builtIn);
}

TEST_F(Store, WithItsLastRecordRemovedStaysEmptyWhenItIsOpenedAgain) {
  home.putUserFile(oneRecord("WM_1", "Mine"));
  world.open()->removeRecord(u"WM_1");
  EXPECT_EQ(bytesOf(world.userFile()), wholeFile(""));
  EXPECT_THAT(world.list(*world.open()), ElementsAre("0=None"));
}

TEST_F(Store, ChangesMadeTogetherAreOneWrite) {
  const auto store = world.open();
  world.writes.clear();
  store->changeTogether([&](Watermarks::Changes& changes) {
    changes.remove(u"1");
    changes.add(world.newRecord(*store, u"Mine"));
  });
  EXPECT_THAT(world.writes, ElementsAre("user/ZVeffect.xml"));
  EXPECT_FALSE(world.namesIn(world.userFile()).contains("1"));
}

TEST_F(Store, KeepsIdsThatAreNoNamesOfElements) {
  const auto store = world.open();
  const std::u16string ids[] = {u"0a", u"../x", u"C:\\x", u"", u" ", u"<&>", u"_x0031_", u"\u0001", u"\xD800", u"名"};
  for (const auto& id : ids) store->updateRecord(id, world.newRecord(*store, u"name of " + id));
  const auto again = world.open();
  for (const auto& id : ids) {
    const Node record = again->record(id.empty() ? again->findIdByName(u"name of ") : id);
    if (!record) continue;
    EXPECT_EQ(fieldText(*record, Field::stylename).view(), u"name of " + id);
  }
  EXPECT_EQ(world.list(*again).size(), 6 + std::size(ids));
  for (const auto& entry : std::filesystem::recursive_directory_iterator(home.folder.path))
    EXPECT_TRUE(entry.is_directory() || entry.path() == world.userFile() ||
                entry.path().filename() == Files::homeLockName)
        << entry.path();
}

TEST_F(Store, WritesEachLocalRecordBackToItsOwnFileAsItWas) {
  world.set(u"kilnworks.tips.userdata.support", u"True");
  home.putUserFile(oneRecord("WM_u", "user's"));
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  home.putLocalFile("b", oneRecord("WM_b", "from b"));
  const auto store = world.open();
  EXPECT_THAT(world.list(*store), ElementsAre("0=None", "WM_a_G=from a*", "WM_b_G=from b*", "WM_u=user's"));
  EXPECT_EQ(bytesOf(world.localFile("a")), wholeFile(R"(  <WM_a_G>
    <label>from a</label>
    <value>WM_a</value>
    <stylename>from a</stylename>
    <fontname>Arial</fontname>
    <downloaded>True</downloaded>
  </WM_a_G>
)"));
  EXPECT_EQ(world.namesIn(world.localFile("b"), Field::value), (Names{{"0", ""}, {"WM_b_G", "WM_b"}}));
  EXPECT_EQ(world.namesIn(world.userFile()), (Names{{"0", "$IDS_NONE;"}, {"WM_u", "user's"}}));

  // Reopening gives the same records.
  EXPECT_EQ(world.list(*world.open()), world.list(*store));
}

TEST_F(Store, WithDownloadedDataOffTakesLocalRecordsForItsOwn) {
  home.putUserFile(oneRecord("WM_u", "user's"));
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  const auto store = world.open();
  EXPECT_THAT(world.list(*store), ElementsAre("0=None", "WM_a=from a", "WM_u=user's"));
  EXPECT_EQ(fieldText(*store->record(u"WM_a"), Field::downloaded).view(), u"False");
  EXPECT_EQ(store->findIdByName(u"from a"), u"WM_a");
}

TEST_F(Store, ALocalRecordNamedLikeAUsersTakesItsPlaceWithDownloadedDataOff) {
  home.putUserFile(oneRecord("WM_u", "same"));
  home.putLocalFile("a", oneRecord("WM_a", "same"));
  const auto store = world.open();
  EXPECT_THAT(world.list(*store), ElementsAre("0=None", "WM_u=same"));
  EXPECT_EQ(world.namesIn(world.localFile("a"), Field::value), (Names{{"0", ""}, {"WM_u", "WM_a"}}));
}

TEST_F(Store, OfTwoFoldersTheLaterOneInOrderGivesTheRecord) {
  const auto named = [](const std::string& angle) {
    return watermarkFile(element("WM_x", {{"label", "same"}, {"value", "WM_x"}, {"angle", angle}}));
  };
  for (const auto& [setting, id] : {std::pair(u"False", u"WM_x"), std::pair(u"True", u"WM_x_G")}) {
    world.set(u"kilnworks.tips.userdata.support", setting);
    home.putLocalFile("c", named("30"));
    home.putLocalFile("a", named("10"));
    home.putLocalFile("b", named("20"));
    const Node record = world.open()->record(id);
    ASSERT_TRUE(record);
    EXPECT_EQ(fieldText(*record, Field::angle).view(), u"30");
    EXPECT_EQ(fieldText(*record, Field::sourceFile).view(), world.localFile("c").u16string());
  }
}

TEST_F(Store, TakesEveryWritingOfTrueForDownloadedDataBeingOn) {
  home.putUserFile(oneRecord("WM_u", "user's"));
  for (const char16_t* on : {u"True", u"true", u"1"}) {
    home.putLocalFile("a", oneRecord("WM_a", "from a"));
    world.set(u"kilnworks.tips.userdata.support", on);
    EXPECT_THAT(world.list(*world.open()), ElementsAre("0=None", "WM_a_G=from a*", "WM_u=user's"));
  }
  for (const char16_t* off : {u"False", u"0", u"", u"TRUE", u"yes"}) {
    home.putLocalFile("a", oneRecord("WM_a", "from a"));
    world.set(u"kilnworks.tips.userdata.support", off);
    EXPECT_THAT(world.list(*world.open()), ElementsAre("0=None", "WM_a=from a", "WM_u=user's"));
  }
}

// In its file it keeps the name that it has there; what is written since does not bring that back before the opening.
TEST_F(Store, ARenamedLocalRecordHasItsNewNameUntilTheNextOpening) {
  for (const auto& [setting, ending] : {std::pair(u"False", u""), std::pair(u"True", u"_G")}) {
    world.set(u"kilnworks.tips.userdata.support", setting);
    home.putLocalFile("a", watermarkFile(element("WM_a", {{"label", "one"}, {"value", "WM_a"}}) +
                                         element("WM_b", {{"label", "two"}, {"value", "WM_b"}})));
    const auto store = world.open();
    const std::u16string id = std::u16string(u"WM_a") + ending;
    const Node renamed = store->record(id)->clone();
    setField(*renamed, Field::stylename, u"renamed");
    setField(*renamed, Field::angle, u"30");
    store->updateRecord(id, renamed);
    EXPECT_EQ(world.namesIn(world.localFile("a")).at(Formats::toUtf8(id)), "one");

    store->removeRecord(std::u16string(u"WM_b") + ending);
    EXPECT_EQ(world.namesIn(world.localFile("a")), (Names{{"0", "$IDS_NONE;"}, {Formats::toUtf8(id), "one"}}));
    EXPECT_EQ(fieldText(*store->record(id), Field::stylename).view(), u"renamed");
    EXPECT_EQ(fieldText(*world.open()->record(id), Field::stylename).view(), u"one");
  }
}

TEST_F(Store, ADownloadedRecordNamedLikeAUsersIsKeptBesideIt) {
  world.set(u"kilnworks.tips.userdata.support", u"True");
  home.putUserFile(oneRecord("WM_u", "same"));
  home.putLocalFile("a", oneRecord("WM_a", "same"));
  const auto store = world.open();
  EXPECT_THAT(world.list(*store), ElementsAre("0=None", "WM_u=same", "WM_u_G=same*"));
  EXPECT_EQ(store->findIdByName(u"same"), u"WM_u");
  EXPECT_EQ(world.namesIn(world.localFile("a"), Field::value), (Names{{"0", ""}, {"WM_u_G", "WM_a"}}));
  store->removeRecord(u"WM_u");
  EXPECT_FALSE(store->hasName(u"same"));
}

TEST_F(Store, DownloadedRecordsAreMarkedOnlyWithAnIcon) {
  world.set(u"kilnworks.tips.userdata.support", u"True");
  home.putUserFile(oneRecord("WM_u", "user's"));
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  const auto store = world.open();
  EXPECT_THAT(world.list(*store, false), ElementsAre("0=None", "WM_a_G=from a", "WM_u=user's"));
  const auto items = world.host.listData();
  store->fillList(*items, nullptr);
  const auto item = Kiln::smartCast<Refhost::ListItem>(items->at(1));
  EXPECT_EQ(item->colour(), u"");
  EXPECT_FALSE(item->isMarked());
}

TEST_F(Store, AnEmptyIdInLocalDataStaysEmptyInItsFile) {
  home.putLocalFile("a", watermarkFile(element("x", {{"stylename", "from a"}, {"value", ""}})));
  const auto store = world.open();
  const std::string id = Formats::toUtf8(store->findIdByName(u"from a"));
  EXPECT_TRUE(id.starts_with("WM_"));
  EXPECT_EQ(world.namesIn(world.localFile("a"), Field::value), (Names{{"0", ""}, {id, ""}}));
}

TEST_F(Store, NeverWritesWhatIsOnlyInMemory) {
  home.putUserFile(watermarkFile(element("WM_1", {{"stylename", "Mine"},
                                                  {"value", "WM_1"},
                                                  {"SourceFile", "/etc/passwd"},
                                                  {"OrigId", "stray"},
                                                  {"OrigName", "stray"}})));
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  const auto store = world.open();
  world.add(*store, u"Another");
  for (const auto& file : {world.userFile(), world.localFile("a")})
    for (const char* field : {"SourceFile", "OrigId", "OrigName", "stray"})
      EXPECT_THAT(bytesOf(file), Not(HasSubstr(field)));
  EXPECT_EQ(store->findIdByName(u"Mine"), u"WM_1");
}

TEST_F(Store, MergedCopyHoldsEverythingAsItIsInMemory) {
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  const auto store = world.open();
  EXPECT_THAT(world.writes, ElementsAre("user/ZVeffect.xml", "localdata/ZVeffect.xml", "localdata/a/ZVeffect.xml",
                                        "user/ZVeffect.xml"));
  const Names sources = world.namesIn(world.mergedCopy(), Field::sourceFile);
  EXPECT_EQ(sources.size(), 7U);
  EXPECT_EQ(sources.at("WM_a"), world.localFile("a").string());
  EXPECT_EQ(sources.at("1"), world.userFile().string());
  EXPECT_EQ(world.namesIn(world.mergedCopy(), Field::origId).at("WM_a"), "WM_a");

  world.writes.clear();
  world.add(*store, u"Mine");
  EXPECT_THAT(world.writes, ElementsAre("localdata/ZVeffect.xml", "user/ZVeffect.xml"));
}

TEST_F(Store, MergedCopyIsNotWrittenForOneFile) {
  std::filesystem::create_directories(home.folder.path / "localdata" / "empty");
  world.open();
  EXPECT_FALSE(std::filesystem::exists(world.mergedCopy()));
}

TEST_F(Store, SavingRestoresAMissingMergedCopy) {
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  const auto store = world.open();
  const std::string copy = bytesOf(world.mergedCopy());
  std::filesystem::remove(world.mergedCopy());
  world.writes.clear();
  EXPECT_TRUE(store->save());
  EXPECT_THAT(world.writes, ElementsAre("localdata/ZVeffect.xml"));
  EXPECT_EQ(bytesOf(world.mergedCopy()), copy);
}

TEST_F(Store, ARefusedChangeWritesNothing) {
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  const auto store = world.open();
  std::filesystem::remove(world.mergedCopy());
  world.writes.clear();
  world.add(*store, u"");
  store->removeRecord(u"WM_unknown");
  EXPECT_TRUE(world.writes.empty());
}

TEST_F(Store, IsMergedWithSeveralFoldersOrAMarker) {
  EXPECT_FALSE(world.open()->isMerged());
  EXPECT_TRUE(world.open(true)->isMerged());
  std::filesystem::create_directories(home.folder.path / "localdata" / "a");
  EXPECT_FALSE(world.open()->isMerged());
  EXPECT_TRUE(world.open(true)->isMerged());
  Testing::writeFile(home.folder.path / "localdata" / "file", "no folder");
  EXPECT_FALSE(world.open()->isMerged());
  Testing::writeFile(home.folder.path / "localdata" / "~merge", "");
  EXPECT_TRUE(world.open()->isMerged());
  std::filesystem::remove(home.folder.path / "localdata" / "~merge");
  std::filesystem::create_directories(home.folder.path / "localdata" / "b");
  EXPECT_TRUE(world.open()->isMerged());
}

TEST_F(Store, WithoutTheLocalDataSettingReadsTheUsersFileAlone) {
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  world.manager->settings->remove(u"kilnworks.user.localdata.path");
  EXPECT_EQ(world.list(*world.open()).size(), 6U);
  EXPECT_EQ(bytesOf(world.localFile("a")), oneRecord("WM_a", "from a"));
}

TEST_F(Store, WithoutTheLocalDataSettingWritesNoMergedCopy) {
  world.manager->settings->remove(u"kilnworks.user.localdata.path");
  const auto store = world.open();
  world.writes.clear();
  const Node record = world.newRecord(*store, u"Elsewhere");
  setField(*record, Field::sourceFile, (home.folder.path / "elsewhere.xml").u16string());
  store->updateRecord(u"WM_1", record);
  EXPECT_THAT(world.writes, ElementsAre("elsewhere.xml"));
}

TEST_F(Store, ExportsEveryRecordAsItIsInItsFile) {
  world.set(u"kilnworks.tips.userdata.support", u"True");
  home.putUserFile(oneRecord("WM_u", "same"));
  home.putLocalFile("a", oneRecord("WM_a", "same"));
  const auto to = home.folder.path / "export.xml";
  world.open()->exportMerged(world.host.path(to.u16string()));
  EXPECT_EQ(world.namesIn(to, Field::value), (Names{{"0", ""}, {"WM_u", "WM_u"}, {"WM_u_G", "WM_a"}}));
  EXPECT_EQ(world.namesIn(to), (Names{{"0", "$IDS_NONE;"}, {"WM_u", "same"}, {"WM_u_G", "same"}}));
  for (const char* field : {"SourceFile", "OrigId", "OrigName"}) EXPECT_THAT(bytesOf(to), Not(HasSubstr(field)));
}

TEST_F(Store, MovingARecordBetweenFilesWritesTheOneThatGainsItFirst) {
  home.putUserFile(oneRecord("WM_u", "user's"));
  home.putLocalFile("a", watermarkFile(element("WM_a", {{"label", "moving"}, {"value", "WM_a"}}) +
                                       element("WM_b", {{"label", "staying"}, {"value", "WM_b"}})));
  const auto store = world.open();
  world.writes.clear();
  world.add(*store, u"moving");
  EXPECT_THAT(world.writes, ElementsAre("localdata/ZVeffect.xml", "user/ZVeffect.xml", "localdata/a/ZVeffect.xml"));
  EXPECT_EQ(world.namesIn(world.userFile()), (Names{{"0", "$IDS_NONE;"}, {"WM_a", "moving"}, {"WM_u", "user's"}}));
  EXPECT_EQ(world.namesIn(world.localFile("a")), (Names{{"0", "$IDS_NONE;"}, {"WM_b", "staying"}}));
}

TEST_F(Store, ReadingManyRecordsWritesEachFileOnce) {
  for (int folder = 0; folder < 10; ++folder) {
    std::string elements;
    for (int i = 0; i < 20; ++i) {
      const std::string id = "WM_" + std::to_string(folder * 100 + i);
      elements += element(id, {{"label", "name of " + id}, {"value", id}});
    }
    home.putLocalFile("folder" + std::to_string(folder), watermarkFile(elements));
  }
  world.open();
  EXPECT_EQ(world.writes.size(), 1 + 1 + 10 + 1U);  // the initial file, the merged copy, each folder's file, the user's
}

}  // namespace
