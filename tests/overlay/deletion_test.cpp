// Deleting an overlay in the tab.
#include "overlay_tab.h"
#include "tests/files/forwarding_disk.h"

namespace {

using Testing::builtOptions;
using testing::ElementsAre;

TEST_F(OverlayGroup, LosesADeletedOverlayFromDiskAndListAndSelection) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.world->take();
  tab.remove();
  const auto events = tab.world->take();
  EXPECT_THAT(tab.dialogs, ElementsAre("chrome://base/content/dlg_confirmdelete.xul"));
  EXPECT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00002.opa=terms"));
  EXPECT_EQ(tab.selected(), "None");
  EXPECT_THAT(sent(events),
              ElementsAre("OverlaySel=None,OverlayImage=None",
                          "OverlaySel=None,OverlayOccurance=None,OverlayLayering=Underlay", "OverlayName=None"));
  std::vector<std::string> files;
  for (const auto& event : events)
    if (event.op == "write" || event.op == "delete") files.push_back(event.op + " " + Testing::member(event, "path"));
  EXPECT_THAT(files, ElementsAre("delete profile/overlays/00001.bmp", "delete profile/overlays/00001.opa",
                                 "write profile/overlays/ovlNmFl.flo"));
  EXPECT_EQ(home.userIndex(), recordBytes(u"terms", u"00002.opa"));
  using Entries = std::filesystem::directory_iterator;
  EXPECT_EQ(std::distance(Entries(home.userFolder()), Entries()), 3) << "the index, the other overlay, its thumbnail";
}

TEST_F(OverlayGroup, HasADeletedOverlayBackByUndoAndNotByRedo) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  const std::string index = home.userIndex();
  const auto values = tab.world->preferences.model().values();
  tab.remove();
  ASSERT_TRUE(tab.world->preferences.canUndo());
  tab.world->preferences.undo();
  EXPECT_EQ(home.userIndex(), index);
  EXPECT_TRUE(std::filesystem::exists(home.userFolder() / "00001.opa"));
  EXPECT_TRUE(std::filesystem::exists(home.userFolder() / "00001.bmp"));
  EXPECT_EQ(tab.selected(), "00001.opa");
  EXPECT_EQ(tab.world->preferences.model().values(), values);

  tab.world->preferences.redo();
  EXPECT_EQ(home.userIndex(), recordBytes(u"terms", u"00002.opa"));
  EXPECT_FALSE(std::filesystem::exists(home.userFolder() / "00001.opa"));
  EXPECT_FALSE(std::filesystem::exists(home.userFolder() / "00001.bmp"));
  EXPECT_EQ(tab.selected(), "None");
  EXPECT_THAT(tab.world->face.failures, testing::IsEmpty());
}

// A disk on which the index cannot be written.
class FixedIndex final : public ForwardingDisk {
 public:
  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    if (target.filename() == "ovlNmFl.flo")
      throw Files::DiskError(target, "written", std::make_error_code(std::errc::no_space_on_device));
    return disk.create(temporary, target);
  }
};

TEST_F(OverlayGroup, LosesADeletedOverlayWhoseIndexCannotBeWritten) {
  FixedIndex disk;
  auto options = builtOptions();
  options.disk = &disk;
  OverlayTab tab(home, options);
  tab.choose(u"00001.opa");
  tab.remove();
  EXPECT_THAT(tab.world->face.failures, testing::SizeIs(1));
  EXPECT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00002.opa=terms"));
  EXPECT_EQ(tab.value(u"OverlaySel"), "None");
  EXPECT_EQ(tab.value(u"OverlayImage"), "None");
}

TEST_F(OverlayGroup, LeavesATrueIndexWhenTheLastOverlayIsDeleted) {
  home.putUser({{u"only", u"00001.opa"}});
  std::filesystem::remove(home.userFolder() / "00002.opa");
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.remove();
  EXPECT_EQ(home.userIndex(), "");
  EXPECT_THAT(OverlayTab(home).items(), ElementsAre("None=None", "Multiple=Multiple"));
}

TEST_F(OverlayGroup, ListsWhatTheStoreHasAfterADeletion) {
  home.putUser({{u"one", u"00001.opa"}, {u"again", u"00001.opa"}, {u"two", u"00002.opa"}});
  OverlayTab tab(home);
  home.putUser({{u"one", u"00001.opa"}, {u"two", u"00002.opa"}, {u"theirs", u"00003.opa"}});
  tab.choose(u"00001.opa");
  tab.remove();
  EXPECT_THAT(tab.items(),
              ElementsAre("None=None", "Multiple=Multiple", "00001.opa=one", "00003.opa=theirs", "00002.opa=two"));
  EXPECT_EQ(tab.selected(), "None");
}

TEST_F(OverlayGroup, DeletesASelectionThatNobodyHasByGoingBackToNone) {
  auto options = builtOptions();
  options.properties = {{u"OverlaySel", u"00009.opa"}, {u"OverlayImage", u"OverlayImage"}};
  OverlayTab tab(home, options);
  EXPECT_EQ(tab.selected(), "None");
  tab.remove();
  EXPECT_EQ(sent(tab.world->take()).front(), "OverlaySel=None,OverlayImage=None");
  EXPECT_EQ(tab.value(u"OverlaySel"), "None");
  EXPECT_THAT(tab.items(), testing::SizeIs(4));
}

TEST_F(OverlayGroup, DeletesNothingWithoutAYes) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.onDialog = [](Refhost::Dialog& dialog) { dialog.cancel(); };
  tab.button(u"btn_OvlDel").click();
  EXPECT_TRUE(std::filesystem::exists(home.userFolder() / "00001.opa"));
  EXPECT_EQ(tab.items().size(), 4U);
  EXPECT_EQ(tab.selected(), "00001.opa");
}

}  // namespace
