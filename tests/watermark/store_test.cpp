// The content of the store, and the list.
#include "effect/watermark/numbers.h"
#include "store_world.h"

#include <gmock/gmock.h>

namespace {

using namespace Effect;
using testing::ElementsAre;

const std::vector<std::string> builtInList = {"0=None", "1=Confidential", "2=Draft",
                                              "3=Copy", "4=Urgent",       "5=For internal use"};

TEST_F(Store, OfAFreshHomeHoldsTheBuiltInRecordsAfterNone) { EXPECT_EQ(world.list(*world.open()), builtInList); }

TEST_F(Store, TellsTheNamesInTheUsersLanguage) {
  StoreWorld japanese(home.folder.path, Files::realDisk(), "ja-JP");
  EXPECT_THAT(japanese.list(*japanese.open()),
              ElementsAre("0=なし", "1=社外秘", "2=下書き", "3=写し", "4=至急", "5=社内限り"));
}

TEST_F(Store, BuiltInRecordsHaveTextsInEveryLocale) {
  for (const std::string& locale : world.chrome.locales("effect")) {
    StoreWorld other(home.folder.path, Files::realDisk(), locale);
    for (const std::string& line : other.list(*other.open())) EXPECT_EQ(line.find('$'), line.npos) << locale << line;
  }
}

TEST_F(Store, BuiltInRecordsHaveDefaults) {
  const auto store = world.open();
  for (const char16_t* id : {u"1", u"2", u"3", u"4", u"5"}) {
    const Node defaults = store->record(id)->child(Field::defaultSetting);
    ASSERT_TRUE(defaults);
    for (const Name field : {Field::label, Field::stylename, Field::fontsize, Field::fontstyle, Field::colour,
                             Field::angle, Field::positionX, Field::positionY, Field::printStyle})
      EXPECT_EQ(fieldText(*defaults, field).view(), fieldText(*store->record(id), field).view());
  }
}

TEST_F(Store, NoneRecordHasTheDefaults) {
  const Node none = world.open()->makeNoneRecord();
  EXPECT_EQ(none->name().view(), u"0");
  EXPECT_EQ(fieldText(*none, Field::label).view(), u"$IDS_NONE;");
  EXPECT_EQ(fieldText(*none, Field::stylename).view(), u"$IDS_NONE;");
  EXPECT_EQ(fieldText(*none, Field::fontname).view(), u"Arial");
  EXPECT_EQ(fieldText(*none, Field::fontsize).view(), u"72");
  EXPECT_EQ(fieldText(*none, Field::fontstyle).view(), u"Regular");
  EXPECT_EQ(fieldText(*none, Field::colour).view(), u"#808080");
  EXPECT_EQ(fieldText(*none, Field::angle).view(), u"0");
  EXPECT_EQ(fieldText(*none, Field::positionX).view(), u"C");
  EXPECT_EQ(fieldText(*none, Field::positionY).view(), u"C");
  EXPECT_EQ(fieldText(*none, Field::printStyle).view(), u"Solid");
  EXPECT_EQ(fieldText(*none->child(Field::transparency), Field::intensity).view(), u"0");
}

TEST_F(Store, LanguageDecidesTheFaceOfRecordsThatNameNone) {
  home.putUserFile(watermarkFile(element("WM_1", {{"stylename", "a"}, {"value", "WM_1"}}) +
                                 element("WM_2", {{"stylename", "b"}, {"value", "WM_2"}, {"fontname", ""}}) +
                                 element("WM_3", {{"stylename", "c"}, {"value", "WM_3"}, {"fontname", "Own"}})));
  const std::string asItWas = bytesOf(world.userFile());
  const std::pair<const char*, const char16_t*> faces[] = {{"en-US", u"Arial"},  {"de-DE", u"Arial"},
                                                           {"fr-FR", u"Arial"},  {"ja-JP", u"ＭＳ Ｐゴシック"},
                                                           {"zh-TW", u"細明體"}, {"zh-CN", u"宋体"}};
  for (const auto& [locale, face] : faces) {
    home.putUserFile(asItWas);
    StoreWorld other(home.folder.path, Files::realDisk(), locale);
    const auto store = other.open();
    EXPECT_EQ(fieldText(*store->makeNoneRecord(), Field::fontname).view(), face);
    EXPECT_EQ(fieldText(*store->record(u"WM_1"), Field::fontname).view(), face);
    EXPECT_EQ(fieldText(*store->record(u"WM_2"), Field::fontname).view(), face);
    EXPECT_EQ(fieldText(*store->record(u"WM_3"), Field::fontname).view(), u"Own");
  }
}

TEST_F(Store, OrdersIdsByTheirUnits) {
  home.putUserFile(watermarkFile(element("WM_b", {{"stylename", "s"}, {"value", "WM_b"}}) +
                                 element("a", {{"stylename", "t"}, {"value", "a"}}) +
                                 element("_x0032_", {{"stylename", "u"}, {"value", "2"}}) +
                                 element("WM_B", {{"stylename", "v"}, {"value", "WM_B"}}) +
                                 element("_x0031_0", {{"stylename", "w"}, {"value", "10"}}) +
                                 element("_x0031_", {{"stylename", "x"}, {"value", "1"}})));
  EXPECT_THAT(world.list(*world.open()), ElementsAre("0=None", "1=x", "10=w", "2=u", "WM_B=v", "WM_b=s", "a=t"));
}

TEST_F(Store, OrdersIdsBeyondTheBasicPlaneByTheirUnitsToo) {
  // U+FF21 comes after U+1F600, whose first unit is a surrogate.
  home.putUserFile(watermarkFile(element("a", {{"stylename", "letter"}, {"value", "Ａ"}}) +
                                 element("b", {{"stylename", "face"}, {"value", "😀"}})));
  EXPECT_THAT(world.list(*world.open()), ElementsAre("0=None", "😀=face", "Ａ=letter"));
}

TEST_F(Store, ListsTheNoneEntryFirstWhateverIdsThereAre) {
  home.putUserFile(watermarkFile(element("x", {{"stylename", "odd"}, {"value", "!"}})));
  EXPECT_THAT(world.list(*world.open()), ElementsAre("0=None", "!=odd"));
}

TEST_F(Store, LeavesOutANoneEntryThatTheListHas) {
  const auto items = world.host.listData();
  items->append(u"Nothing", u"0");
  world.open()->fillList(*items, nullptr);
  EXPECT_EQ(items->count(), 6);
  EXPECT_EQ(items->at(1)->value().view(), u"1");
}

TEST_F(Store, FillsAListThatHasOtherEntries) {
  for (const bool isHidden : {false, true}) {
    world.set(u"kilnworks.defaultuserdata.hide", isHidden ? u"2" : u"0");
    const auto items = world.host.listData();
    items->append(u"Theirs", u"1");
    world.open()->fillList(*items, nullptr);
    EXPECT_EQ(items->count(), isHidden ? 1 : 7);
    EXPECT_EQ(items->at(isHidden ? 0 : 1)->value().view(), u"0");
  }
}

TEST_F(Store, HidesTheBuiltInIdsAlone) {
  world.set(u"kilnworks.defaultuserdata.hide", u"2");
  home.putUserFile(watermarkFile(element("_x0031_", {{"stylename", "one"}, {"value", "1"}}) +
                                 element("_x0031_1", {{"stylename", "eleven"}, {"value", "11"}}) +
                                 element("_x0035_", {{"stylename", "five"}, {"value", "5"}}) +
                                 element("_x0036_", {{"stylename", "six"}, {"value", "6"}}) +
                                 element("a", {{"stylename", "letter"}, {"value", "a"}})));
  EXPECT_THAT(world.list(*world.open()), ElementsAre("0=None", "11=eleven", "6=six", "a=letter"));
}

TEST_F(Store, NeverReadsTheNoneRecordOfAFile) {
  home.putUserFile(watermarkFile(element("_x0030_", {{"stylename", "$IDS_NONE;"}, {"label", "trap"}, {"value", "0"}}) +
                                 element("WM_1", {{"stylename", "$IDS_NONE;"}, {"value", "WM_1"}}) +
                                 element("WM_2", {{"stylename", ""}, {"label", "no name"}, {"value", "WM_2"}}) +
                                 element("WM_3", {{"value", "WM_3"}}) +
                                 element("WM_4", {{"stylename", "kept"}, {"value", "WM_4"}})));
  const auto store = world.open();
  EXPECT_THAT(world.list(*store), ElementsAre("0=None", "WM_4=kept"));
  EXPECT_EQ(fieldText(*store->record(u"0"), Field::label).view(), u"$IDS_NONE;");
}

TEST_F(Store, ARecordThatClaimsTheNoneRecordsIdGetsAnother) {
  home.putUserFile(watermarkFile(element("_x0030_", {{"stylename", "mine"}, {"value", "0"}})));
  const auto store = world.open();
  const std::u16string id = store->findIdByName(u"mine");
  EXPECT_TRUE(id.starts_with(u"WM_"));
  EXPECT_EQ(fieldText(*store->record(u"0"), Field::stylename).view(), u"$IDS_NONE;");
}

TEST_F(Store, NamesARecordByItsLabelWhenItHasNoName) {
  home.putUserFile(watermarkFile(
      "<WM_1><label>Mine</label><value>WM_1</value><DefaultSetting><label>Old</label></DefaultSetting></WM_1>"));
  const auto store = world.open();
  EXPECT_EQ(store->findIdByName(u"Mine"), u"WM_1");
  EXPECT_EQ(fieldText(*store->record(u"WM_1")->child(Field::defaultSetting), Field::stylename).view(), u"Old");
}

TEST_F(Store, GivesAnIdToRecordsThatHaveNone) {
  home.putUserFile(watermarkFile(element("x", {{"stylename", "no value"}}) +
                                 element("y", {{"stylename", "empty value"}, {"value", ""}})));
  const auto store = world.open();
  for (const char16_t* name : {u"no value", u"empty value"}) {
    const std::u16string id = store->findIdByName(name);
    EXPECT_TRUE(id.starts_with(u"WM_"));
    EXPECT_EQ(fieldText(*store->record(id), Field::value).view(), id);
  }
}

TEST_F(Store, KeepsBothOfTwoRecordsWithOneId) {
  home.putUserFile(watermarkFile(element("WM_1", {{"stylename", "first"}, {"value", "WM_1"}}) +
                                 element("WM_1", {{"stylename", "second"}, {"value", "WM_1"}})));
  const auto store = world.open();
  EXPECT_EQ(store->findIdByName(u"first"), u"WM_1");
  EXPECT_TRUE(store->hasName(u"second"));
  EXPECT_EQ(world.namesIn(world.userFile()).size(), 3U);
}

TEST_F(Store, KeepsTheLaterInIdOrderOfTwoRecordsWithOneName) {
  home.putUserFile(watermarkFile(element("WM_b", {{"stylename", "same"}, {"value", "WM_b"}, {"angle", "20"}}) +
                                 element("WM_a", {{"stylename", "same"}, {"value", "WM_a"}, {"angle", "10"}})));
  const auto store = world.open();
  EXPECT_THAT(world.list(*store), ElementsAre("0=None", "WM_a=same"));
  EXPECT_EQ(fieldText(*store->record(u"WM_a"), Field::angle).view(), u"20");
}

TEST_F(Store, AddingANameThatIsThereReplacesItsRecordAndKeepsTheId) {
  const auto store = world.open();
  const std::u16string id = world.add(*store, u"Mine");
  EXPECT_TRUE(id.starts_with(u"WM_"));
  const Node again = world.newRecord(*store, u"Mine");
  setField(*again, Field::angle, u"30");
  EXPECT_EQ(store->addRecord(again), id);
  EXPECT_EQ(fieldText(*store->record(id), Field::angle).view(), u"30");
  EXPECT_EQ(world.list(*store).size(), builtInList.size() + 1);
}

TEST_F(Store, AddingCopiesTheRecord) {
  const auto store = world.open();
  const Node given = world.newRecord(*store, u"Mine");
  const std::u16string id = store->addRecord(given);
  setField(*given, Field::angle, u"30");
  EXPECT_EQ(fieldText(*store->record(id), Field::angle).view(), u"0");
  EXPECT_EQ(fieldText(*store->record(id), Field::value).view(), id);
  EXPECT_EQ(fieldText(*store->record(id), Field::downloaded).view(), u"False");
}

TEST_F(Store, RefusesANameThatIsNone) {
  const auto store = world.open();
  world.writes.clear();
  EXPECT_EQ(world.add(*store, u""), u"");
  EXPECT_EQ(world.add(*store, u"$IDS_NONE;"), u"");
  const Node nameless = store->makeNoneRecord();
  nameless->removeChild(Field::stylename);
  EXPECT_EQ(store->addRecord(nameless), u"");
  EXPECT_EQ(world.list(*store), builtInList);
  EXPECT_TRUE(world.writes.empty());
}

TEST_F(Store, FindsTheFirstOfANameInIdOrder) {
  const auto store = world.open();
  for (const char16_t* id : {u"b", u"a", u"c"}) store->updateRecord(id, world.newRecord(*store, u"same"));
  EXPECT_EQ(store->findIdByName(u"same"), u"a");
  EXPECT_EQ(store->findIdByName(u"Same"), u"");
  EXPECT_EQ(store->findIdByName(u""), u"");
  EXPECT_TRUE(store->hasName(u"same"));
  store->removeRecord(u"a");
  EXPECT_EQ(store->findIdByName(u"same"), u"b");
}

TEST_F(Store, UpdatingARecordThatIsNotThereMakesIt) {
  const auto store = world.open();
  EXPECT_TRUE(store->updateRecord(u"WM_new", world.newRecord(*store, u"Made")));
  EXPECT_EQ(store->findIdByName(u"Made"), u"WM_new");
  EXPECT_EQ(world.namesIn(world.userFile()).at("WM_new"), "Made");
}

TEST_F(Store, AnUpdateWithoutASourceGoesIntoTheUsersFile) {
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  const auto store = world.open();
  const Node record = world.newRecord(*store, u"Made");
  record->removeChild(Field::sourceFile);
  store->updateRecord(u"WM_new", record);
  EXPECT_EQ(fieldText(*store->record(u"WM_new"), Field::sourceFile).view(), world.userFile().u16string());
  EXPECT_EQ(world.namesIn(world.userFile()).at("WM_new"), "Made");
}

TEST_F(Store, ARecordThatIsAddedWithoutASourceGoesIntoTheUsersFile) {
  const auto store = world.open();
  const Node record = world.newRecord(*store, u"Made");
  record->removeChild(Field::sourceFile);
  const std::u16string id = store->addRecord(record);
  EXPECT_EQ(fieldText(*store->record(id), Field::sourceFile).view(), world.userFile().u16string());
  EXPECT_EQ(world.namesIn(world.userFile()).at(Formats::toUtf8(id)), "Made");
}

TEST_F(Store, MarksNothingWhileDownloadedDataIsOff) {
  home.putUserFile(oneRecord("WM_1", "Mine"));
  const auto store = world.open();
  const Node record = world.newRecord(*store, u"Theirs");
  setField(*record, Field::downloaded, u"True");
  store->updateRecord(u"WM_2", record);
  EXPECT_THAT(world.list(*store), ElementsAre("0=None", "WM_1=Mine", "WM_2=Theirs"));
}

TEST_F(Store, AnUpdateStaysInTheFileOfItsSource) {
  home.putLocalFile("a", oneRecord("WM_a", "from a"));
  const auto store = world.open();
  const Node record = store->record(u"WM_a")->clone();
  setField(*record, Field::angle, u"30");
  store->updateRecord(u"WM_a", record);
  EXPECT_EQ(world.namesIn(world.localFile("a"), Field::angle).at("WM_a"), "30");
  EXPECT_FALSE(world.namesIn(world.userFile()).contains("WM_a"));

  const Node made = world.newRecord(*store, u"Made");
  setField(*made, Field::sourceFile, world.localFile("a").u16string());
  store->updateRecord(u"WM_new", made);
  EXPECT_EQ(world.namesIn(world.localFile("a")).at("WM_new"), "Made");
  EXPECT_FALSE(world.namesIn(world.userFile()).contains("WM_new"));
}

TEST_F(Store, ListsNoRecordWithoutAName) {
  home.putUserFile(oneRecord("WM_1", "Mine"));
  const auto store = world.open();
  store->updateRecord(u"WM_2", world.newRecord(*store, u""));
  EXPECT_THAT(world.list(*store), ElementsAre("0=None", "WM_1=Mine"));
}

TEST_F(Store, RemovingTellsWhetherThereWasARecord) {
  const auto store = world.open();
  EXPECT_TRUE(store->removeRecord(u"2"));
  EXPECT_FALSE(store->removeRecord(u"2"));
  EXPECT_FALSE(store->removeRecord(u"WM_unknown"));
  EXPECT_FALSE(store->removeRecord(u"0"));
  EXPECT_TRUE(store->record(u"0"));
}

TEST_F(Store, IsFullWithTwentyRecordsBesideNone) {
  const auto store = world.open();
  for (int i = 0; i < 15; ++i) {
    EXPECT_FALSE(store->isFull());
    world.add(*store, u"own " + decimalText(i));
  }
  EXPECT_TRUE(store->isFull());
  store->removeRecord(u"1");
  EXPECT_FALSE(store->isFull());
}

TEST_F(Store, HiddenBuiltInRecordsAreNeitherListedNorCounted) {
  world.set(u"kilnworks.defaultuserdata.hide", u"2");
  const auto store = world.open();
  EXPECT_THAT(world.list(*store), ElementsAre("0=None"));
  for (int i = 0; i < 20; ++i) {
    EXPECT_FALSE(store->isFull());
    world.add(*store, u"own " + decimalText(i));
  }
  EXPECT_TRUE(store->isFull());
  EXPECT_EQ(world.list(*store).size(), 21U);
}

TEST_F(Store, HidesOnlyForTheBitOfValueTwo) {
  for (const char16_t* hides : {u"2", u"3", u"6 of them", u" 2"}) {
    world.set(u"kilnworks.defaultuserdata.hide", hides);
    EXPECT_EQ(world.list(*world.open()).size(), 1U);
  }
  for (const char16_t* shows : {u"0", u"1", u"4", u"", u"yes", u"x2"}) {
    world.set(u"kilnworks.defaultuserdata.hide", shows);
    EXPECT_EQ(world.list(*world.open()), builtInList);
  }
}

}  // namespace
