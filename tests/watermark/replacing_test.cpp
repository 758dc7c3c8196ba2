// Which watermarks a change replaces or deletes, and what is asked before.
#include "tab_changes.h"

#include <gmock/gmock.h>

namespace {

using Formats::toUtf8;
using testing::ElementsAre;
using testing::IsEmpty;
using Testing::World;

// The list shows two entries of one name where the user's is named as a built-in one reads.
constexpr const char* draftTwice = R"(<Watermarks>
  <_x0032_><label>$IDS_WM_DRAFT;</label><value>2</value></_x0032_>
  <WM_1><label>Draft</label><value>WM_1</value></WM_1>
</Watermarks>)";

TEST_F(Changes, AgreeingToReplaceTheOtherOfANameReplacesItThoughTheNameIsOld) {
  putUserFile(draftTwice);
  open();
  world->preferences.set(u"WatermarkSel", u"WM_1");
  willAccept({{angleBox, u"20"}});
  click(u"btn_WMEdit");
  EXPECT_THAT(questions, ElementsAre("Draft"));
  EXPECT_THAT(names(), ElementsAre("None", "Draft"));
  EXPECT_THAT(namesOnDisk(), ElementsAre("$IDS_NONE;", "Draft"));
  EXPECT_EQ(toUtf8(world->value(u"WatermarkTextAngle")), "340");
}

TEST_F(Changes, DecliningToReplaceTheOtherOfANameKeepsBothAndStoresNothing) {
  putUserFile(draftTwice);
  open();
  world->preferences.set(u"WatermarkSel", u"WM_1");
  willAccept({{angleBox, u"20"}});
  saysYes = false;
  click(u"btn_WMEdit");
  EXPECT_THAT(questions, ElementsAre("Draft"));
  EXPECT_THAT(names(), ElementsAre("None", "Draft", "Draft"));
  EXPECT_EQ(bytesOf(userFile()).find("<angle>20"), std::string::npos);
}

// Somebody else's "Corp" is downloaded, and selected.
class ChangesBesideADownloadedOne : public Changes {
 protected:
  ChangesBesideADownloadedOne() {
    const auto theirs = folder.path / "home" / "localdata" / "a";
    std::filesystem::create_directories(theirs);
    Testing::writeFile(theirs / "ZVeffect.xml", oneRecord("WM_d", "Corp"));
    auto options = Testing::builtOptions();
    options.home = folder.path / "home";
    options.settings = {{u"kilnworks.tips.userdata.support", u"True"},
                        {u"kilnworks.watermark.stylename.support", u"True"}};
    world = std::make_unique<World>(options);
    world->preferences.set(u"WatermarkSel", u"WM_d_G");
    world->take();
  }
};

TEST_F(ChangesBesideADownloadedOne, AskBeforeANewOneReplacesAnEntry) {
  willName(u"two");
  saysYes = false;
  click(u"btn_WMAdd");
  EXPECT_THAT(questions, ElementsAre("two"));
  EXPECT_THAT(names(), ElementsAre("None", "Corp", "one", "three", "two"));
  EXPECT_THAT(namesOnDisk(), ElementsAre("$IDS_NONE;", "one", "two", "three"));
}

TEST_F(ChangesBesideADownloadedOne, AskBeforeItsNewNameReplacesAnEntry) {
  willAccept({{nameBox, u"two"}});
  saysYes = false;
  click(u"btn_WMEdit");
  EXPECT_THAT(questions, ElementsAre("two"));
  EXPECT_THAT(names(), ElementsAre("None", "Corp", "one", "three", "two"));
  EXPECT_THAT(namesOnDisk(), ElementsAre("$IDS_NONE;", "one", "two", "three"));

  saysYes = true;
  click(u"btn_WMEdit");
  EXPECT_THAT(names(), ElementsAre("None", "one", "three", "two"));
  EXPECT_THAT(namesOnDisk(), ElementsAre("$IDS_NONE;", "one", "three"));
}

TEST_F(ChangesBesideADownloadedOne, AskNothingWhereBothAreKept) {
  willName(u"Corp");
  saysYes = false;
  click(u"btn_WMAdd");
  EXPECT_THAT(questions, IsEmpty());
  EXPECT_THAT(names(), ElementsAre("None", "Corp", "Corp", "one", "three", "two"));
}

// The list shows what another process has added at the next opening.
TEST_F(Changes, AskBeforeTheyReplaceARecordThatTheListDoesNotShow) {
  open();
  addAsAnotherProcess("WM_9", "theirs");
  willName(u"ours");
  click(u"btn_WMAdd");
  EXPECT_THAT(questions, IsEmpty());
  for (const char16_t* button : {u"btn_WMAdd", u"btn_WMEdit"}) {
    questions.clear();
    willName(u"theirs");
    saysYes = false;
    click(button);
    EXPECT_THAT(questions, ElementsAre("theirs"));
    EXPECT_THAT(bytesOf(userFile()), testing::HasSubstr("WM_9"));
  }
}

// The host closes the dialog that a declined question kept open.
TEST_F(Changes, ReplaceNothingThatWasDeclinedWhenTheHostClosesTheEditor) {
  open();
  for (const char16_t* button : {u"btn_WMAdd", u"btn_WMEdit"}) {
    world->preferences.set(u"WatermarkSel", u"WM_2");
    willName(u"one");
    saysYes = false;
    click(button);
    EXPECT_THAT(namesOnDisk(), ElementsAre("$IDS_NONE;", "one", "two", "three"));
    EXPECT_THAT(names(), ElementsAre("None", "one", "three", "two"));
  }
}

TEST_F(Changes, DeleteNothingThatTheListMerelyShows) {
  putUserFile(watermarkFile(element("_x0031_", {{"label", "$IDS_WM_DRAFT;"}, {"value", "1"}}) +
                            element("WM_1", {{"label", "Mine"}, {"value", "WM_1"}})));
  auto options = Testing::builtOptions();
  options.home = folder.path / "home";
  options.settings = {{u"kilnworks.defaultuserdata.hide", u"2"}};
  world = std::make_unique<World>(options);
  world->preferences.set(u"WatermarkSel", u"WM_1");
  world->preferences.set(u"WatermarkSel", u"1");
  EXPECT_EQ(list().selection(), -1);
  willAccept({});
  for (const char16_t* button : {u"btn_WMDel", u"btn_WMEdit"}) click(button);
  EXPECT_THAT(namesOnDisk(), ElementsAre("$IDS_NONE;", "$IDS_WM_DRAFT;", "Mine"));
  EXPECT_THAT(names(), ElementsAre("None", "Mine"));
  EXPECT_EQ(toUtf8(world->value(u"WatermarkSel")), "1");
}

}  // namespace
