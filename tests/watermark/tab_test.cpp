// The watermark group of the tab: the list, what a selection writes, and what it follows.
#include "watermark_tab.h"

#include "formats/text.h"
#include "host/model/settings.h"
#include "host/reference_host.h"
#include "host/widgets/list.h"
#include "tests/support/host_world.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

namespace {

using Formats::toUtf8;
using Testing::builtOptions;
using testing::ElementsAre;
using testing::IsEmpty;
using Testing::transitions;
using Testing::widgetOperations;
using Testing::World;

// "NAME=VALUE" of each direct write to a property.
std::vector<std::string> written(const std::vector<Refhost::TraceEvent>& events) {
  std::vector<std::string> lines;
  for (const auto& event : events)
    if (event.op == "set") lines.push_back(Testing::member(event, "property") + "=" + Testing::member(event, "value"));
  return lines;
}

TEST(WatermarkList, IsInOrderOfTheNamesAfterNone) {
  Tab tab;
  EXPECT_THAT(tab.items(), ElementsAre("0=None", "WM_1=apple", "WM_2=Banana", "WM_3=Äpfel"));
}

TEST(WatermarkList, OfAnEmptyHomeHasTheBuiltInWatermarks) {
  Tab tab("");
  EXPECT_THAT(tab.items(),
              ElementsAre("0=None", "1=Confidential", "3=Copy", "2=Draft", "5=For internal use", "4=Urgent"));
  EXPECT_TRUE(std::filesystem::exists(tab.home.path / "user" / "ZVeffect.xml"));
}

TEST(WatermarkSetup, ConnectsListThenButtonsThenBoxes) {
  World world;
  auto all = Testing::connections(world.events);
  std::erase_if(
      all, [](const std::string& line) { return line.find("WM") == line.npos && line.find("Watermark") == line.npos; });
  std::erase_if(all, [](const std::string& line) { return line.find("-change") != line.npos; });
  EXPECT_THAT(all,
              ElementsAre("change lst_selectedWatermark", "click btn_WMAdd", "click btn_WMEdit", "click btn_WMDel",
                          "change ePTKWPageWatermark_PrintFirstPageOnly", "change ePTKWPageWatermark_PrintPerPage"));
}

TEST(WatermarkSelection, ByTheUserIsOneTransition) {
  Tab tab;
  tab.choose(u"WM_1");
  EXPECT_THAT(transitions(tab.world->take()), ElementsAre("WatermarkSel=WM_1,Watermark=Watermark"));
  tab.choose(u"0");
  // The second one is a consequence of selecting none.
  EXPECT_THAT(transitions(tab.world->take()), ElementsAre("WatermarkSel=0,Watermark=None", "Watermark=None"));
}

TEST(WatermarkSelection, WritesTheDetails) {
  Tab tab;
  tab.choose(u"WM_1");
  EXPECT_THAT(written(tab.world->take()),
              ElementsAre("WatermarkText=Mine", "WatermarkTextWidth=L", "WatermarkTextHeight=U",
                          "WatermarkTextScale=True", "WatermarkLayering=Overlay", "WatermarkTextFontSize=24",
                          "WatermarkTextAngle=315", "WatermarkTextStyle=BoldItalic", "WatermarkTextFont=Face",
                          "WatermarkTextColour=#00FF0000", "WatermarkTextTransparency=30",
                          "WatermarkTextOutline=False"));
}

TEST(WatermarkSelection, OfAnOutlineHasNoTransparency) {
  Tab tab;
  tab.choose(u"WM_2");
  EXPECT_EQ(tab.value(u"WatermarkTextOutline"), "True");
  EXPECT_EQ(tab.value(u"WatermarkTextTransparency"), "0");
}

TEST(WatermarkSelection, TakesWhatIsNoNumberForZeroAndWhatIsNoColourAsItIs) {
  Tab tab;
  tab.choose(u"WM_2");
  EXPECT_EQ(tab.value(u"WatermarkTextFontSize"), "0");
  EXPECT_EQ(tab.value(u"WatermarkTextAngle"), "450");
  EXPECT_EQ(tab.value(u"WatermarkTextColour"), "#0012");
  EXPECT_EQ(tab.value(u"WatermarkTextWidth"), "");
}

TEST(WatermarkSelection, TakesNoMoreThanSixDigitsOfAColour) {
  Tab tab("<Watermarks><WM_1><label>a</label><value>WM_1</value><colour>#FF0000CC</colour></WM_1></Watermarks>");
  tab.choose(u"WM_1");
  EXPECT_EQ(tab.value(u"WatermarkTextColour"), "#00FF0000");
}

TEST(WatermarkSelection, WithoutAnIntensityIsNotTransparent) {
  for (const char* transparency : {"", "<transparency/>", "<transparency><intensity>x</intensity></transparency>"}) {
    Tab tab(std::string("<Watermarks><WM_1><label>a</label><value>WM_1</value><printStyle>Transparency</printStyle>") +
            transparency + "</WM_1></Watermarks>");
    tab.choose(u"WM_1");
    EXPECT_EQ(tab.value(u"WatermarkTextTransparency"), "0") << transparency;
    EXPECT_THAT(tab.world->face.failures, IsEmpty());
  }
}

TEST(WatermarkSelection, TranslatesTheText) {
  Tab tab;
  tab.choose(u"WM_3");
  EXPECT_EQ(tab.value(u"WatermarkText"), "Draft");
}

TEST(WatermarkSelection, OfTheFirstBuiltInOneGivesTwelveDetails) {
  Tab tab("");
  tab.choose(u"1");
  EXPECT_THAT(written(tab.world->take()),
              ElementsAre("WatermarkText=Confidential", "WatermarkTextWidth=C", "WatermarkTextHeight=C",
                          "WatermarkTextScale=True", "WatermarkLayering=Overlay", "WatermarkTextFontSize=72",
                          "WatermarkTextAngle=315", "WatermarkTextStyle=Bold", "WatermarkTextFont=Arial",
                          "WatermarkTextColour=#00808080", "WatermarkTextTransparency=60",
                          "WatermarkTextOutline=False"));
}

TEST(WatermarkSelection, OfNoneWritesNeutralDetailsAndAnEmptyText) {
  Tab tab;
  tab.choose(u"WM_1");
  tab.world->take();
  tab.world->preferences.set(u"WatermarkSel", u"0");
  const auto events = tab.world->take();
  EXPECT_THAT(written(events),
              ElementsAre("WatermarkText=", "WatermarkTextWidth=C", "WatermarkTextHeight=C", "WatermarkTextScale=True",
                          "WatermarkLayering=Overlay", "WatermarkTextFontSize=72", "WatermarkTextAngle=360",
                          "WatermarkTextStyle=Regular", "WatermarkTextFont=Arial", "WatermarkTextColour=#00808080",
                          "WatermarkTextTransparency=0", "WatermarkTextOutline=False"));
  EXPECT_THAT(transitions(events), ElementsAre("Watermark=None"));
  EXPECT_EQ(tab.value(u"Watermark"), "None");
  EXPECT_EQ(tab.selected(), "0");
}

TEST(WatermarkSelection, EnablesEditDeleteAndPerPageExactlyForAWatermark) {
  Tab tab;
  for (const bool isAny : {true, false}) {
    tab.world->preferences.set(u"WatermarkSel", isAny ? u"WM_2" : u"0");
    for (const char16_t* id : {u"btn_WMEdit", u"btn_WMDel", perPageId}) EXPECT_EQ(tab.isEnabled(id), isAny);
  }
}

TEST(WatermarkSelection, WithoutOneOfTheThreeEnablesNoneOfThem) {
  for (const char16_t* missing : {u"btn_WMEdit", u"btn_WMDel", perPageId}) {
    auto options = builtOptions();
    options.withoutWidgets = {missing};
    Tab tab(oneOfAKind, options);
    tab.world->preferences.set(u"WatermarkSel", u"WM_1");
    EXPECT_THAT(widgetOperations(tab.world->take()), ElementsAre("lst_selectedWatermark select WM_1"));
  }
}

TEST(WatermarkSelection, WritesTheDetailsThatTheModelHas) {
  Testing::TemporaryFolder folder;
  auto options = builtOptions();
  const auto resources = folder.path / "resources";
  options.resources = resources;
  Testing::copyResources(resources);
  const auto file = resources / "models" / "standard.xml";
  std::string model = Testing::bytesOf(file);
  const std::string detail = R"(<property name="WatermarkTextScale" value="True"/>)";
  ASSERT_NE(model.find(detail), model.npos);
  Testing::writeFile(file, model.replace(model.find(detail), detail.size(), ""));
  Tab tab(oneOfAKind, options);
  tab.choose(u"WM_1");
  EXPECT_EQ(written(tab.world->take()).size(), 11U);
  EXPECT_THAT(tab.world->face.failures, IsEmpty());
}

TEST(WatermarkSelection, OfAnUnknownIdIsNoneWithDownloadedDataToo) {
  auto options = builtOptions();
  options.settings = {{u"kilnworks.tips.userdata.support", u"True"}};
  Tab tab(oneOfAKind, options);
  tab.world->preferences.set(u"WatermarkSel", u"WM_gone");
  EXPECT_EQ(tab.value(u"Watermark"), "None");
  EXPECT_EQ(tab.selected(), "0");
  EXPECT_THAT(tab.world->face.failures, IsEmpty());
}

TEST(WatermarkSelection, OfAnUnknownIdIsNone) {
  Tab tab;
  tab.world->preferences.set(u"WatermarkSel", u"WM_gone");
  EXPECT_EQ(tab.value(u"WatermarkText"), "");
  EXPECT_EQ(tab.value(u"Watermark"), "None");
  EXPECT_EQ(tab.selected(), "0");
  EXPECT_THAT(tab.world->face.failures, IsEmpty());
}

// A record selected before downloaded data was marked has got another id.
TEST(WatermarkSelection, FindsTheDownloadedRecordOfThatIdWhereDownloadedDataIsOn) {
  for (const auto* setting : {u"True", u"true", u"1", u"False", u"0"}) {
    const bool isOn = Refhost::readsAsTrue(setting);
    Testing::TemporaryFolder home;
    std::filesystem::create_directories(home.path / "localdata" / "a");
    Testing::writeFile(home.path / "localdata" / "a" / "ZVeffect.xml",
                       std::string("<Watermarks><x><label>Down</label><value>") + (isOn ? "WM_d" : "WM_d_G") +
                           "</value></x></Watermarks>");
    auto options = builtOptions();
    options.home = home.path;
    options.settings = {{u"kilnworks.tips.userdata.support", setting}};
    options.properties = {{u"WatermarkSel", u"WM_d"}};
    World world(options);
    EXPECT_EQ(toUtf8(world.value(u"WatermarkText")), isOn ? "Down" : "");
    const auto selected = world.widget<Refhost::ListBox>(listId).selectedItem();
    EXPECT_EQ(toUtf8(selected->value().view()), isOn ? "WM_d_G" : "0");
  }
}

TEST(WatermarkSelection, WhileLockedLeavesTheButtons) {
  Tab tab;
  tab.world->preferences.lock({u"Other", u"WatermarkSel"});
  tab.world->preferences.set(u"WatermarkSel", u"WM_1");
  EXPECT_THAT(widgetOperations(tab.world->take()), ElementsAre("lst_selectedWatermark select WM_1"));
  EXPECT_EQ(tab.value(u"WatermarkText"), "Mine");
}

TEST(WatermarkTab, WorksWithoutAnyOfItsWidgets) {
  auto options = builtOptions();
  options.withoutWidgets = {
      listId,    u"btn_WMAdd", u"btn_WMEdit", u"btn_WMDel", u"ePTKWPageWatermark_PrintFirstPageOnly",
      perPageId, u"lbl_WM"};
  Tab tab(oneOfAKind, options);
  tab.world->preferences.set(u"WatermarkSel", u"WM_1");
  EXPECT_EQ(tab.value(u"WatermarkText"), "Mine");
  tab.world->preferences.setAvailable(u"Watermark", u"Watermark", false);
  tab.world->preferences.setAvailable(u"Watermark", u"Watermark", true);
  tab.world->preferences.lock({u"WatermarkSel"});
  tab.world->preferences.setAvailable(u"Watermark", u"Watermark", false);
  EXPECT_EQ(tab.value(u"WatermarkSel"), "0");
  EXPECT_THAT(tab.world->face.failures, IsEmpty());
}

TEST(WatermarkTab, ShowsDownloadedRecordsRedWithAnIcon) {
  auto options = builtOptions();
  options.settings = {{u"kilnworks.tips.userdata.support", u"True"}};
  Testing::TemporaryFolder home;
  std::filesystem::create_directories(home.path / "localdata" / "a");
  Testing::writeFile(home.path / "localdata" / "a" / "ZVeffect.xml",
                     "<Watermarks><x><label>Zebra</label><value>WM_d</value></x></Watermarks>");
  options.home = home.path;
  World world(options);
  auto& items = world.widget<Refhost::ListBox>(listId).items();
  const auto item = Kiln::smartCast<Refhost::ListItem>(items.at(items.count() - 1));
  EXPECT_EQ(item->value().view(), u"WM_d_G");
  EXPECT_EQ(item->colour(), u"#FF0000");
  EXPECT_TRUE(item->isMarked());
  const auto icon = Kiln::smartCast<Refhost::Image>(item->image());
  ASSERT_TRUE(icon);
  EXPECT_EQ(icon->source, u"chrome://base/content/bitmaps/tips_UD_tb.bmp");
  EXPECT_EQ(icon->scope, u"global");
  const auto own = Kiln::smartCast<Refhost::ListItem>(items.at(1));
  EXPECT_EQ(own->colour(), u"");
  EXPECT_FALSE(own->image());
}

TEST(WatermarkTab, OpensOnADamagedFileAndTellsWhereItIsKept) {
  Tab tab("<Watermarks><WM_1>");
  EXPECT_EQ(tab.items().size(), 6U);
  ASSERT_EQ(tab.world->face.failures.size(), 1U);
  EXPECT_NE(tab.world->face.failures[0].find("ZVeffect.damaged-1.xml"), std::string::npos);
}

// Nor is anything of the local data read then.
TEST(WatermarkTab, ShowsNoneAloneWhereThereAreNoBuiltInWatermarks) {
  Testing::TemporaryFolder folder;
  auto options = builtOptions();
  const auto resources = folder.path / "resources";
  options.resources = resources;
  Testing::copyResources(resources);
  Testing::writeFile(resources / "effect" / "content" / "effect.xml", "<Watermarks/>");
  options.home = folder.path / "home";
  std::filesystem::create_directories(options.home / "localdata" / "a");
  Testing::writeFile(options.home / "localdata" / "a" / "ZVeffect.xml",
                     "<Watermarks><WM_a><label>from a</label><value>WM_a</value></WM_a></Watermarks>");
  World world(options);
  auto& items = world.widget<Refhost::ListBox>(listId).items();
  ASSERT_EQ(items.count(), 1);
  EXPECT_EQ(items.at(0)->value().view(), u"0");
  EXPECT_THAT(world.face.failures, IsEmpty());
}

Refhost::Options withoutATab(const std::filesystem::path& home, const char16_t* uiMode) {
  auto options = builtOptions();
  options.mode = Refhost::Mode::rootless;
  options.home = home;
  if (*uiMode != u'\0') options.settings = {{u"UIMode", std::u16string(uiMode)}};
  return options;
}

TEST(WithoutATab, ASelectionFillsTheDetails) {
  Testing::TemporaryFolder home;
  World world(withoutATab(home.path, u""));
  EXPECT_FALSE(std::filesystem::exists(home.path / "user" / "ZVeffect.xml"));
  world.preferences.set(u"WatermarkSel", u"2");
  EXPECT_EQ(toUtf8(world.value(u"WatermarkText")), "Draft");
  world.preferences.set(u"WatermarkSel", u"0");
  EXPECT_EQ(toUtf8(world.value(u"WatermarkText")), "");
  EXPECT_EQ(toUtf8(world.value(u"Watermark")), "None");
}

TEST(WithoutATab, ReadsTheFilesAnewForEachSelectionAtPrintTimeOnly) {
  for (const char16_t* uiMode : {u"PrePrint", u""}) {
    Testing::TemporaryFolder home;
    World world(withoutATab(home.path, uiMode));
    world.preferences.set(u"WatermarkSel", u"2");
    Testing::writeFile(home.path / "user" / "ZVeffect.xml",
                       "<Watermarks><_x0032_><label>Changed</label><value>2</value></_x0032_></Watermarks>");
    world.preferences.set(u"WatermarkSel", u"2");
    EXPECT_EQ(toUtf8(world.value(u"WatermarkText")), *uiMode == u'\0' ? "Draft" : "Changed");
  }
}

}  // namespace
