// Adding, editing and deleting watermarks with the tab's buttons.
#include "tab_changes.h"

#include <gmock/gmock.h>

namespace {

using Formats::toUtf8;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Testing::transitions;
using Testing::World;

TEST_F(Changes, AddingPutsTheRecordIntoStoreListAndSelection) {
  open();
  willName(u"another");
  click(u"btn_WMAdd");
  EXPECT_EQ(nameAtOpening, "");
  EXPECT_THAT(names(), ElementsAre("None", "another", "one", "three", "two"));
  EXPECT_TRUE(selected().starts_with("WM_"));
  EXPECT_THAT(transitions(world->take()), ElementsAre("WatermarkSel=" + selected() + ",Watermark=Watermark"));
  EXPECT_EQ(toUtf8(world->value(u"WatermarkText")), "another");
  EXPECT_THAT(namesOnDisk(), testing::Contains("another"));
}

TEST_F(Changes, AddingANameThatIsThereReplacesItsItem) {
  open();
  willName(u"two");
  click(u"btn_WMAdd");
  EXPECT_THAT(names(), ElementsAre("None", "one", "three", "two"));
  EXPECT_NE(selected(), "WM_2");
  EXPECT_THAT(namesOnDisk(), SizeIs(4));
}

TEST_F(Changes, AddingTheNameOfTheSelectedWatermarkIsAskedAboutToo) {
  open();
  world->preferences.set(u"WatermarkSel", u"WM_2");
  std::vector<std::string> opened;
  willName(u"two");
  world->face.onModal = [&opened, type = world->face.onModal](Refhost::Dialog& dialog) {
    opened.push_back(toUtf8(dialog.url()));
    type(dialog);
  };
  click(u"btn_WMAdd");
  EXPECT_THAT(opened,
              ElementsAre("chrome://effect/content/dlg_watermark.xul", "chrome://base/content/dlg_overwrite.xul"));
  EXPECT_THAT(names(), ElementsAre("None", "one", "three", "two"));
}

// Saving takes up what another process has added; the list shows that at the next opening.
TEST_F(Changes, AddingReplacesARecordThatTheListDoesNotShow) {
  open();
  addAsAnotherProcess("WM_9", "theirs");
  willName(u"ours");
  click(u"btn_WMAdd");
  willName(u"theirs");
  click(u"btn_WMAdd");
  EXPECT_THAT(names(), ElementsAre("None", "one", "ours", "theirs", "three", "two"));
  EXPECT_NE(selected(), "WM_9");
  EXPECT_THAT(namesOnDisk(), testing::UnorderedElementsAre("$IDS_NONE;", "one", "two", "three", "ours", "theirs"));
  EXPECT_THAT(world->face.failures, IsEmpty());
}

// Faces draw the list anew from its data, so it has that before the selection changes.
TEST_F(Changes, ShowTheListBeforeTheySelect) {
  open();
  std::vector<std::string> shown;
  int drawn = 0;
  world->preferences.trace().listen([&](const Refhost::TraceEvent& event) {
    if (event.op == "dialog") drawn = world->face.widgetChanges;
    if (event.op != "transition" || drawn < 0) return;
    EXPECT_GT(world->face.widgetChanges, std::exchange(drawn, -1));
    shown = names();
  });
  willName(u"another");
  click(u"btn_WMAdd");
  EXPECT_THAT(shown, ElementsAre("None", "another", "one", "three", "two"));
  willAccept({{nameBox, u"zebra"}});
  click(u"btn_WMEdit");
  EXPECT_THAT(shown, ElementsAre("None", "one", "three", "two", "zebra"));
  willAccept({});
  click(u"btn_WMDel");
  EXPECT_THAT(shown, ElementsAre("None", "one", "three", "two"));
}

TEST_F(Changes, WithoutTheListOnlyAdd) {
  auto options = Testing::builtOptions();
  options.withoutWidgets = {u"lst_selectedWatermark"};
  open(options);
  willName(u"another");
  click(u"btn_WMAdd");
  EXPECT_THAT(namesOnDisk(), testing::UnorderedElementsAre("$IDS_NONE;", "one", "two", "three", "another"));
  EXPECT_EQ(toUtf8(world->value(u"WatermarkText")), "another");
  willName(u"two");
  click(u"btn_WMAdd");
  const auto before = namesOnDisk();
  EXPECT_THAT(before, SizeIs(5));
  world->take();
  willName(u"edited");
  for (const char16_t* id : {u"btn_WMEdit", u"btn_WMDel"}) click(id);
  EXPECT_EQ(namesOnDisk(), before);
  EXPECT_THAT(transitions(world->take()), IsEmpty());
  EXPECT_THAT(world->face.failures, IsEmpty());
}

TEST_F(Changes, CancelledAfterEditsLeaveTheRecordAsItWas) {
  open();
  world->preferences.set(u"WatermarkSel", u"WM_2");
  world->face.onModal = [](Refhost::Dialog& dialog) {
    EXPECT_TRUE(dynamic_cast<Refhost::TextBoxNode&>(*dialog.layout().find(angleBox)).edit(u"20", Refhost::Edit::typed));
    dialog.cancel();
  };
  click(u"btn_WMEdit");
  world->preferences.set(u"WatermarkSel", u"WM_2");
  EXPECT_EQ(toUtf8(world->value(u"WatermarkTextAngle")), "350");
}

// Its record holds a reference, and from then on the name.
TEST_F(Changes, EditingABuiltInWatermarkKeepsItsItem) {
  putUserFile(watermarkFile(element("_x0032_", {{"label", "$IDS_WM_DRAFT;"}, {"value", "2"}})));
  open();
  world->preferences.set(u"WatermarkSel", u"2");
  willAccept({{angleBox, u"20"}});
  click(u"btn_WMEdit");
  EXPECT_THAT(names(), ElementsAre("None", "Draft"));
  EXPECT_THAT(namesOnDisk(), ElementsAre("$IDS_NONE;", "Draft"));
}

TEST_F(Changes, AddingTheNameOfADownloadedWatermarkKeepsBoth) {
  const auto theirs = folder.path / "home" / "localdata" / "a";
  std::filesystem::create_directories(theirs);
  Testing::writeFile(theirs / "ZVeffect.xml", oneRecord("WM_d", "theirs"));
  auto options = Testing::builtOptions();
  options.home = folder.path / "home";
  options.settings = {{u"kilnworks.tips.userdata.support", u"True"}};
  world = std::make_unique<World>(options);
  willName(u"theirs");
  click(u"btn_WMAdd");
  EXPECT_THAT(names(), ElementsAre("None", "one", "theirs", "theirs", "three", "two"));
}

TEST_F(Changes, DeletingWithoutItsDialogOrTheAddButton) {
  auto options = Testing::builtOptions();
  options.withoutWidgets = {u"btn_WMAdd"};
  const auto resources = folder.path / "resources";
  options.resources = resources;
  Testing::copyResources(resources);
  open(options);
  world->preferences.set(u"WatermarkSel", u"WM_2");
  willAccept({});
  click(u"btn_WMDel");
  EXPECT_THAT(names(), ElementsAre("None", "one", "three"));
  EXPECT_THAT(world->face.failures, IsEmpty());

  std::filesystem::remove(resources / "base" / "content" / "dlg_confirmdelete.xul");
  world->preferences.set(u"WatermarkSel", u"WM_1");
  click(u"btn_WMDel");
  EXPECT_THAT(names(), ElementsAre("None", "one", "three"));
  EXPECT_THAT(world->face.failures, ElementsAre(testing::HasSubstr("dlg_confirmdelete.xul")));
}

TEST_F(Changes, OfNoneAreNotMade) {
  open();
  std::vector<std::string> opened;
  willAccept({});
  world->face.onModal = [&opened, accept = world->face.onModal](Refhost::Dialog& dialog) {
    opened.push_back(toUtf8(dialog.url()));
    accept(dialog);
  };
  for (const char16_t* id : {u"btn_WMEdit", u"btn_WMDel"}) {
    world->widget<Refhost::Button>(id).enable();
    click(id);
  }
  EXPECT_THAT(opened, ElementsAre("chrome://base/content/dlg_confirmdelete.xul"));
  EXPECT_THAT(names(), SizeIs(4));
  EXPECT_THAT(transitions(world->take()), IsEmpty());
}

TEST_F(Changes, ReplacingIsOneWrite) {
  open();
  willName(u"two");
  click(u"btn_WMAdd");
  const auto events = world->take();
  EXPECT_EQ(std::count_if(events.begin(), events.end(), [](const auto& event) { return event.op == "write"; }), 1);
}

TEST_F(Changes, CancellingTheEditorChangesNothing) {
  open();
  world->preferences.set(u"WatermarkSel", u"WM_2");
  const auto before = names();
  const std::string bytes = bytesOf(userFile());
  world->take();
  for (const char16_t* button : {u"btn_WMAdd", u"btn_WMEdit"}) {
    willCancel();
    click(button);
  }
  EXPECT_EQ(names(), before);
  EXPECT_EQ(bytesOf(userFile()), bytes);
  EXPECT_THAT(transitions(world->take()), IsEmpty());
}

TEST_F(Changes, AddingWithoutANameChangesNothing) {
  open();
  world->take();
  willName(u"$IDS_NONE;");
  click(u"btn_WMAdd");
  EXPECT_THAT(names(), SizeIs(4));
  EXPECT_THAT(transitions(world->take()), IsEmpty());
}

TEST_F(Changes, EditingSelectsTheRecordAgainSoThatItsDetailsAreWritten) {
  open();
  world->preferences.set(u"WatermarkSel", u"WM_2");
  world->take();
  willAccept({{angleBox, u"20"}});
  click(u"btn_WMEdit");
  EXPECT_EQ(nameAtOpening, "two");
  EXPECT_THAT(transitions(world->take()), ElementsAre("WatermarkSel=WM_2,Watermark=Watermark"));
  EXPECT_EQ(toUtf8(world->value(u"WatermarkTextAngle")), "340");
  EXPECT_THAT(names(), ElementsAre("None", "one", "three", "two"));
}

TEST_F(Changes, RenamingMovesTheItemToItsPlace) {
  open();
  world->preferences.set(u"WatermarkSel", u"WM_2");
  willAccept({{nameBox, u"A"}});
  click(u"btn_WMEdit");
  EXPECT_THAT(names(), ElementsAre("None", "A", "one", "three"));
  EXPECT_EQ(selected(), "WM_2");
  EXPECT_THAT(namesOnDisk(), ElementsAre("$IDS_NONE;", "one", "A", "three"));
}

TEST_F(Changes, RenamingToANameThatIsThereReplacesTheOther) {
  open();
  world->preferences.set(u"WatermarkSel", u"WM_2");
  willAccept({{nameBox, u"one"}});
  click(u"btn_WMEdit");
  EXPECT_THAT(names(), ElementsAre("None", "one", "three"));
  EXPECT_EQ(selected(), "WM_2");
  EXPECT_THAT(namesOnDisk(), ElementsAre("$IDS_NONE;", "one", "three"));
}

TEST_F(Changes, DeletingAsksFirstThenSelectsNone) {
  open();
  world->preferences.set(u"WatermarkSel", u"WM_2");
  world->take();
  willCancel();
  click(u"btn_WMDel");
  EXPECT_THAT(names(), SizeIs(4));
  willAccept({});
  click(u"btn_WMDel");
  EXPECT_THAT(names(), ElementsAre("None", "one", "three"));
  EXPECT_EQ(selected(), "0");
  const auto events = world->take();
  EXPECT_THAT(transitions(events), ElementsAre("WatermarkSel=0,Watermark=None", "Watermark=None"));
  EXPECT_THAT(Testing::widgetOperations(events), testing::Not(testing::Contains("btn_WMAdd enable")));
  EXPECT_THAT(namesOnDisk(), ElementsAre("$IDS_NONE;", "one", "three"));
}

TEST_F(Changes, DeletingAsksByTheHostsOwnDialog) {
  open();
  world->preferences.set(u"WatermarkSel", u"WM_2");
  std::vector<std::string> asked;
  world->face.onModal = [&asked](Refhost::Dialog& dialog) { asked.push_back(toUtf8(dialog.url())); };
  click(u"btn_WMDel");
  EXPECT_THAT(asked, ElementsAre("chrome://base/content/dlg_confirmdelete.xul"));
  EXPECT_THAT(names(), SizeIs(4));
}

TEST_F(Changes, AddIsDisabledWhileTheStoreIsFull) {
  std::string records;
  for (int i = 0; i < 19; ++i) {
    const std::string id = "WM_" + std::to_string(i);
    records += element(id, {{"label", id}, {"value", id}});
  }
  putUserFile(watermarkFile(records));
  open();
  EXPECT_TRUE(isEnabled(u"btn_WMAdd"));
  willName(u"the twentieth");
  click(u"btn_WMAdd");
  EXPECT_FALSE(isEnabled(u"btn_WMAdd"));
  willAccept({});
  click(u"btn_WMDel");
  EXPECT_TRUE(isEnabled(u"btn_WMAdd"));
}

TEST_F(Changes, DeletingFromMoreThanFitLeavesAddDisabled) {
  std::string records;
  for (int i = 0; i < 21; ++i) {
    const std::string id = "WM_" + std::to_string(i);
    records += element(id, {{"label", id}, {"value", id}});
  }
  putUserFile(watermarkFile(records));
  open();
  willAccept({});
  for (const bool isStillFull : {true, false}) {
    world->preferences.set(u"WatermarkSel", isStillFull ? u"WM_1" : u"WM_2");
    world->take();
    click(u"btn_WMDel");
    EXPECT_THAT(Testing::widgetOperations(world->take()),
                testing::Contains(isStillFull ? "btn_WMAdd disable" : "btn_WMAdd enable"));
    EXPECT_EQ(isEnabled(u"btn_WMAdd"), !isStillFull);
  }
}

// The editor moves the selection when the user agrees to replace an entry above it.
TEST_F(Changes, AReplacementThatCannotBeSavedLeavesTheSelection) {
  open();
  world->preferences.set(u"WatermarkSel", u"WM_2");
  std::filesystem::remove_all(folder.path / "home" / "user");
  willAccept({{nameBox, u"one"}});
  click(u"btn_WMEdit");
  EXPECT_THAT(world->face.failures, SizeIs(1));
  EXPECT_THAT(names(), ElementsAre("None", "one", "three", "two"));
  EXPECT_EQ(selected(), "WM_2");
}

TEST_F(Changes, WhatCannotBeSavedIsToldAndChangesNothing) {
  open();
  world->preferences.set(u"WatermarkSel", u"WM_2");
  std::filesystem::remove_all(folder.path / "home" / "user");
  world->take();
  const std::pair<const char16_t*, std::u16string> attempts[] = {
      {u"btn_WMAdd", u"another"}, {u"btn_WMEdit", u"renamed"}, {u"btn_WMDel", u""}};
  for (const auto& [button, name] : attempts) {
    if (name.empty())
      willAccept({});
    else
      willName(name);
    click(button);
    EXPECT_THAT(names(), ElementsAre("None", "one", "three", "two"));
    EXPECT_EQ(toUtf8(world->value(u"WatermarkSel")), "WM_2");
  }
  EXPECT_THAT(world->face.failures, SizeIs(3));
}

}  // namespace
