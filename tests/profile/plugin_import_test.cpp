// The plug-in reloads its stores after the import of a profile.
#include "host/allocator.h"
#include "host/profiles/profile_event.h"
#include "tests/files/failing_disk.h"
#include "tests/profile/plugin_run.h"

namespace {

using namespace Testing;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Path = std::filesystem::path;

class PluginImport : public ProfileHomes {};

TEST_F(PluginImport, ImportSelectsBothAgainInOneTransition) {
  putWatermarkFile(home, watermark("WM_1", "Draft"));
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
  PluginRun run(home);
  run.world.preferences.set(u"WatermarkSel", u"WM_1");
  run.world.preferences.set(u"OverlaySel", u"12345.opa");
  run.world.take();
  run.world.preferences.importProfile("p", {});
  const auto events = run.world.take();
  EXPECT_THAT(transitions(events), Contains("WatermarkSel=WM_1,OverlaySel=12345.opa").Times(1));
  const auto first =
      std::find_if(events.begin(), events.end(), [](const auto& event) { return event.op == "transition"; });
  EXPECT_THAT(widgetOperations({events.begin(), first}),
              ElementsAre("lst_selectedWatermark select WM_1", "btn_WMAdd enable", "cmb_EffOverlay select 2",
                          "btn_OvlDel enable", "ePTKWJobOverlayImage_PrintPerPage setEnabled true", "but_EffDet enable",
                          "ePTKWJobOverlayImage_Layering setEnabled true"));
  EXPECT_EQ(run.value(u"WatermarkText"), "Draft");
}

TEST_F(PluginImport, ImportFillsTheListsAnewInOrderAndSelected) {
  PluginRun run(home);
  putWatermarkFile(home, watermark("WM_1", "pear") + watermark("WM_2", "Apple") + watermark("WM_3", "orange"));
  putOverlays(overlaysOf(home), {{u"pear", u"11111.opa"}, {u"Apple", u"22222.opa"}, {u"orange", u"33333.opa"}});
  run.world.preferences.importProfile("p", {{u"WatermarkSel", u"WM_3"},
                                            {u"Watermark", u"Watermark"},
                                            {u"OverlaySel", u"33333.opa"},
                                            {u"OverlayImage", u"OverlayImage"}});
  EXPECT_THAT(run.watermarks(), ElementsAre("0=None", "WM_2=Apple", "WM_3=orange", "WM_1=pear"));
  EXPECT_EQ(run.watermarkList().selectedItem()->value().view(), u"WM_3");
  EXPECT_THAT(run.overlays(),
              ElementsAre("None=None", "Multiple=Multiple", "22222.opa=Apple", "33333.opa=orange", "11111.opa=pear"));
  EXPECT_EQ(run.overlayList().selectedItem()->value().view(), u"33333.opa");
  EXPECT_EQ(run.value(u"Watermark"), "Watermark");
  EXPECT_EQ(run.value(u"WatermarkText"), "orange");
  EXPECT_EQ(run.value(u"OverlayImage"), "OverlayImage");
  EXPECT_EQ(run.value(u"OverlayName"), "orange");
  EXPECT_TRUE(run.isEnabled(u"btn_WMEdit"));
  EXPECT_TRUE(run.isEnabled(u"btn_OvlDel"));
  EXPECT_THAT(run.world.face.failures, IsEmpty());
}

TEST_F(PluginImport, ImportMarksDownloadedData) {
  auto options = optionsFor(home);
  options.settings.emplace_back(u"kilnworks.tips.userdata.support", u"True");
  PluginRun run(options);
  put(home / "localdata" / "a" / "ZVeffect.xml", watermarkFile(watermark("WM_a", "Theirs")));
  putOverlays(home / "localdata" / "a" / "overlays", {{u"Theirs", u"12345.opa"}});
  run.world.preferences.importProfile("p", {});
  EXPECT_THAT(run.watermarks(), Contains("WM_a_G=Theirs*"));
  EXPECT_THAT(run.overlays(), ElementsAre("None=None", "Multiple=Multiple", "12345.opa=Theirs*"));
  constexpr const char* tip = "chrome://base/content/bitmaps/tips_UD_tb.bmp #FF0000";
  EXPECT_EQ(run.tipOf(run.overlayList(), 2), tip);
  const auto watermarks = run.watermarks();
  const auto theirs = std::find(watermarks.begin(), watermarks.end(), "WM_a_G=Theirs*") - watermarks.begin();
  EXPECT_EQ(run.tipOf(run.watermarkList(), static_cast<std::int32_t>(theirs)), tip);
}

// A file name alone does not tell a downloaded overlay from one of the user's; the file that is printed does.
TEST_F(PluginImport, ImportSelectsTheDownloadedOverlayWhereThatIsPrinted) {
  auto options = optionsFor(home);
  options.settings.emplace_back(u"kilnworks.tips.userdata.support", u"True");
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
  const Path theirs = home / "localdata" / "a" / "overlays";
  putOverlays(theirs, {{u"Form", u"12345.opa"}});
  PluginRun run(options);
  run.world.take();
  run.world.preferences.importProfile("p", {{u"OverlaySel", u"12345.opa"},
                                            {u"OverlayImage", u"OverlayImage"},
                                            {u"OverlaySourceFileName", (theirs / "12345.opa").u16string()}});
  const auto events = run.world.take();
  const auto first =
      std::find_if(events.begin(), events.end(), [](const auto& event) { return event.op == "transition"; });
  EXPECT_THAT(run.overlays(), ElementsAre("None=None", "Multiple=Multiple", "12345.opa=Form", "12345.opa=Form*"));
  EXPECT_THAT(widgetOperations({events.begin(), first}), Contains("cmb_EffOverlay select 3"));
  EXPECT_TRUE(run.overlayList().selectedItem()->isMarked());
}

TEST_F(PluginImport, ImportOfAFullStoreDisablesTheAddButton) {
  PluginRun run(home);
  EXPECT_TRUE(run.isEnabled(u"btn_WMAdd"));
  const auto import = [&](int count) {
    std::string records;
    for (int i = 0; i < count; ++i) records += watermark("WM_" + std::to_string(i), "Name " + std::to_string(i));
    putWatermarkFile(home, records);
    run.world.preferences.importProfile("p", {});
  };
  import(20);
  EXPECT_FALSE(run.isEnabled(u"btn_WMAdd"));
  import(19);
  EXPECT_TRUE(run.isEnabled(u"btn_WMAdd"));
  import(21);
  EXPECT_FALSE(run.isEnabled(u"btn_WMAdd"));
}

TEST_F(PluginImport, ImportManagesWithoutTheListOrTheAddButton) {
  for (const char16_t* missing : {u"lst_selectedWatermark", u"btn_WMAdd", u"cmb_EffOverlay"}) {
    auto options = optionsFor(home);
    options.withoutWidgets = {missing};
    PluginRun run(options);
    putWatermarkFile(home, watermark("WM_1", "Draft"));
    run.world.preferences.importProfile("p", {{u"WatermarkSel", u"WM_1"}, {u"Watermark", u"Watermark"}});
    EXPECT_EQ(run.value(u"WatermarkText"), "Draft");
    EXPECT_THAT(run.world.face.failures, IsEmpty());
  }
}

TEST_F(PluginImport, ImportWithoutWhatIsSelectedFallsBackToNone) {
  putWatermarkFile(home, watermark("WM_1", "Draft"));
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
  PluginRun run(home);
  run.world.preferences.set(u"WatermarkSel", u"WM_1");
  run.world.preferences.set(u"OverlaySel", u"12345.opa");
  putWatermarkFile(home, watermark("WM_2", "Other"));
  std::filesystem::remove_all(overlaysOf(home));
  run.world.preferences.importProfile("p", {});
  EXPECT_EQ(run.watermarkList().selectedItem()->value().view(), u"0");
  EXPECT_EQ(run.overlayList().selectedItem()->value().view(), u"None");
  EXPECT_EQ(run.value(u"WatermarkText"), "");
  EXPECT_EQ(run.value(u"OverlaySourceFileName"), "");
  EXPECT_THAT(run.world.face.failures, IsEmpty());
}

// The paths of another machine do not exist; the overlay is found by its file name.
TEST_F(PluginImport, ImportFindsTheOverlaysOfAnotherMachine) {
  PluginRun run(home);
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
  run.world.preferences.importProfile(
      "p", {{u"OverlaySel", u"12345.opa"}, {u"OverlaySourceFileName", u"C:\\Users\\a\\overlays\\12345.opa"}});
  EXPECT_EQ(run.value(u"OverlaySourceFileName"), (overlaysOf(home) / "12345.opa").string());
}

TEST_F(PluginImport, ImportIsOneActionThatUndoTakesBack) {
  PluginRun run(home);
  run.world.preferences.importProfile("p", {{u"MirrorImage", u"MirrorImage"}, {u"Rotate180", u"Rotate180"}});
  EXPECT_EQ(run.value(u"MirrorImage"), "MirrorImage");
  EXPECT_TRUE(run.world.box(u"ePTKWPageMirrorImage").isChecked());
  run.world.preferences.undo();
  EXPECT_EQ(run.value(u"MirrorImage"), "None");
  EXPECT_EQ(run.value(u"Rotate180"), "None");
  EXPECT_FALSE(run.world.preferences.canUndo());
}

TEST_F(PluginImport, ImportTakesNoFactsOfThePrinterAndNoStrangers) {
  PluginRun run(home);
  run.world.preferences.importProfile("p", {{u"ModelNumber", u"KVT"}, {u"NoSuchProperty", u"1"}});
  EXPECT_EQ(run.value(u"ModelNumber"), "");
  EXPECT_THAT(run.world.face.failures, IsEmpty());
}

// Memory suffices for one block, the event. The next selection opens the missing store.
TEST_F(PluginImport, ImportWithoutMemoryForAStoreLeavesItEmpty) {
  PluginRun run(home);
  putWatermarkFile(home, watermark("WM_9", "New"));
  Refhost::heap().failAfter(1);
  run.world.preferences.importProfile("p", {});
  Refhost::heap().failAfter(-1);
  EXPECT_FALSE(run.world.face.failures.empty());
  EXPECT_THAT(run.watermarks(), Contains("1=Confidential"));
  run.world.preferences.set(u"WatermarkSel", u"WM_9");
  EXPECT_EQ(run.value(u"WatermarkText"), "New");
}

TEST_F(PluginImport, AddsEditsAndDeletesWatermarksAfterAnImportWithoutMemoryForTheStore) {
  for (const char16_t* button : {u"btn_WMAdd", u"btn_WMEdit", u"btn_WMDel"}) {
    putWatermarkFile(home, watermark("WM_1", "Draft") + watermark("WM_2", "Other"));
    PluginRun run(home);
    run.world.preferences.set(u"WatermarkSel", u"WM_1");
    putWatermarkFile(home, watermark("WM_1", "Draft") + watermark("WM_9", "New"));
    Refhost::heap().failAfter(1);
    run.world.preferences.importProfile("p", {});
    Refhost::heap().failAfter(-1);
    run.world.face.failures.clear();

    run.world.face.onModal = [](Refhost::Dialog& dialog) {
      if (auto* text = dynamic_cast<Refhost::TextBoxNode*>(dialog.layout().find(u"txt_EffWMTxtBox"))) {
        EXPECT_TRUE(text->edit(u"Typed", Refhost::Edit::typed));
      }
      dialog.accept();
    };
    run.world.widget<Refhost::Button>(button).click();
    EXPECT_THAT(run.world.face.failures, IsEmpty());
    const auto shown = run.watermarks();
    EXPECT_THAT(shown, Contains("WM_9=New"));
    EXPECT_EQ(std::count(shown.begin(), shown.end(), "WM_1=Draft"), button == std::u16string(u"btn_WMAdd") ? 1 : 0);
    const auto isTyped = [](const std::string& line) { return line.ends_with("=Typed"); };
    EXPECT_EQ(std::count_if(shown.begin(), shown.end(), isTyped), button == std::u16string(u"btn_WMDel") ? 0 : 1);
  }
}

TEST_F(PluginImport, OffersWatermarksAfterAnImportWithoutMemoryForTheStore) {
  PluginRun run(home);
  run.world.preferences.setAvailable(u"Watermark", u"None", false);
  run.world.preferences.set(u"WatermarkSel", u"1");
  Refhost::heap().failAfter(1);
  run.world.preferences.importProfile("p", {});
  Refhost::heap().failAfter(-1);
  run.world.face.failures.clear();
  run.world.preferences.setAvailable(u"Watermark", u"None", true);
  EXPECT_THAT(run.world.face.failures, IsEmpty());
  EXPECT_TRUE(run.isEnabled(u"btn_WMAdd"));
}

TEST_F(PluginImport, GoesOnAfterAnImportThatRanOutOfMemory) {
  putWatermarkFile(home, watermark("WM_1", "Draft"));
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}, {u"Letterhead", u"23456.opa"}});
  PluginRun run(home);
  const std::string reset =
      "OverlaySel=None,OverlayImage=None,MultipleOverlayDetails=,OverlayOccurance=None,OverlayLayering=Underlay";
  int withoutStore = 0;
  bool isWhole = false;
  for (long blocks = 0; !isWhole; ++blocks) {
    ASSERT_LT(blocks, 10'000);
    run.world.face.failures.clear();
    Refhost::heap().failAfter(blocks);
    run.world.preferences.importProfile("p", {});
    Refhost::heap().failAfter(-1);
    isWhole = run.world.face.failures.empty();

    // Several overlays are not valid without a store.
    run.world.preferences.setAvailable(u"OverlayImage", u"OverlayImage", false);
    run.overlayList().select(1);
    run.world.take();
    run.world.preferences.setAvailable(u"OverlayImage", u"OverlayImage", true);
    const auto sent = transitions(run.world.take());
    if (!sent.empty()) {
      ++withoutStore;
      EXPECT_EQ(sent.front(), reset);
    }
    run.world.face.failures.clear();
    for (const std::int32_t item : {2, 1, 2}) run.overlayList().choose(item);
    EXPECT_EQ(run.value(u"OverlaySourceFileName"), (overlaysOf(home) / "12345.opa").string()) << blocks;
    run.world.widget<Refhost::Button>(u"but_EffDet").click();
    EXPECT_THAT(run.world.face.failures, IsEmpty()) << blocks;
    run.overlayList().choose(0);
  }
  EXPECT_GT(withoutStore, 0);
}

}  // namespace
