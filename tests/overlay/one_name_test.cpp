// Overlays that share a file name, a name, or a file: what is shown, chosen, printed and deleted is one of them.
#include "overlay_store.h"
#include "overlay_tab.h"

namespace {

using testing::ElementsAre;

// The user's "Zebra" and the local data's "Alpha", both in a file of one name.
class OneFileName : public testing::Test {
 protected:
  OneFileName() {
    home.putUser({{u"Zebra", u"00001.opa"}});
    home.putLocal("a", {{u"Alpha", u"00001.opa"}});
    for (const auto& folder : {home.userFolder(), home.localFolder("a")})
      Testing::writeFile(folder / "00001.bmp", bitmap(2, 3));
  }

  Refhost::Options options() const {
    auto options = Testing::builtOptions();
    options.settings = {{u"kilnworks.user.localdata.path", (home.folder.path / "localdata").u16string()}};
    return options;
  }
  std::string localFile(const std::string& name) const { return (home.localFolder("a") / name).generic_string(); }

  static constexpr std::int32_t alpha = 2;
  static constexpr std::int32_t zebra = 3;
  OverlayHome home;
};

TEST_F(OneFileName, IsShownChosenAndPrintedAsTheOverlayThatIsChosen) {
  OverlayTab tab(home, options());
  ASSERT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00001.opa=Alpha", "00001.opa=Zebra"));
  for (const std::int32_t chosen : {zebra, alpha, zebra}) {
    const bool isZebra = chosen == zebra;
    tab.list().choose(chosen);
    EXPECT_EQ(tab.list().selection(), chosen);
    EXPECT_EQ(tab.value(u"OverlayName"), isZebra ? "Zebra" : "Alpha");
    EXPECT_EQ(tab.value(u"OverlaySourceFileName"), isZebra ? tab.userFile("00001.opa") : localFile("00001.opa"));
    EXPECT_EQ(tab.picture(), isZebra ? tab.userFile("00001.bmp") : localFile("00001.bmp"));
  }
}

TEST_F(OneFileName, IsDeletedAsTheOverlayThatIsShown) {
  OverlayTab tab(home, options());
  tab.list().choose(zebra);
  tab.remove();
  EXPECT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00001.opa=Alpha"));
  EXPECT_FALSE(std::filesystem::exists(home.userFolder() / "00001.opa"));
  EXPECT_TRUE(std::filesystem::exists(home.localFolder("a") / "00001.opa"));
  tab.list().choose(alpha);
  tab.remove();
  EXPECT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple"));
  EXPECT_FALSE(std::filesystem::exists(home.localFolder("a") / "00001.opa"));
}

TEST_F(OneFileName, IsToldApartInTwoFoldersOfDownloadedOverlays) {
  home.putLocal("b", {{u"Beta", u"00001.opa"}});
  auto withMarks = options();
  withMarks.settings.emplace_back(u"kilnworks.tips.userdata.support", u"True");
  OverlayTab tab(home, withMarks);
  ASSERT_THAT(tab.items(),
              ElementsAre("None=None", "Multiple=Multiple", "00001.opa=Alpha*", "00001.opa=Beta*", "00001.opa=Zebra"));
  tab.list().choose(3);
  EXPECT_EQ(tab.list().selection(), 3);
  EXPECT_EQ(tab.value(u"OverlaySourceFileName"), (home.localFolder("b") / "00001.opa").generic_string());
  tab.remove();
  EXPECT_TRUE(std::filesystem::exists(home.localFolder("a") / "00001.opa"));
  EXPECT_FALSE(std::filesystem::exists(home.localFolder("b") / "00001.opa"));
}

// An import may change the selection meanwhile.
TEST_F(OneFileName, IsDeletedAsTheOverlayThatTheQuestionIsAbout) {
  OverlayTab tab(home, options());
  tab.list().choose(zebra);
  tab.onDialog = [&tab](Refhost::Dialog& dialog) {
    tab.list().choose(alpha);
    dialog.accept();
  };
  tab.button(u"btn_OvlDel").click();
  EXPECT_FALSE(std::filesystem::exists(home.userFolder() / "00001.opa"));
  EXPECT_TRUE(std::filesystem::exists(home.localFolder("a") / "00001.opa"));
}

TEST_F(OneFileName, IsShownAgainAsTheOverlayWhoseFileIsPrinted) {
  for (const std::int32_t chosen : {zebra, alpha}) {
    auto saved = options();
    const auto folder = chosen == zebra ? home.userFolder() : home.localFolder("a");
    saved.properties = {{u"OverlaySel", u"00001.opa"},
                        {u"OverlayImage", u"OverlayImage"},
                        {u"OverlaySourceFileName", (folder / "00001.opa").u16string()}};
    OverlayTab tab(home, saved);
    EXPECT_EQ(tab.list().selection(), chosen);
  }
}

class TwoNamesOfOneFile : public testing::Test {
 protected:
  TwoNamesOfOneFile() { home.putUser({{u"Alpha", u"00001.opa"}, {u"Zebra", u"00001.opa"}}); }
  OverlayHome home;
};

TEST_F(TwoNamesOfOneFile, StayTheOnesThatAreChosen) {
  OverlayTab tab(home);
  for (const std::int32_t chosen : {3, 2, 3}) {
    tab.list().choose(chosen);
    EXPECT_EQ(tab.list().selection(), chosen);
  }
  EXPECT_EQ(tab.value(u"OverlayName"), "Zebra");
}

TEST_F(TwoNamesOfOneFile, AreDeletedOneByOneAndTheFileWithTheLast) {
  OverlayTab tab(home);
  tab.list().choose(2);
  tab.remove();
  EXPECT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00001.opa=Zebra"));
  EXPECT_EQ(home.userIndex(), recordBytes(u"Zebra", u"00001.opa"));
  EXPECT_TRUE(std::filesystem::exists(home.userFolder() / "00001.opa"));
  tab.list().choose(2);
  tab.remove();
  EXPECT_EQ(home.userIndex(), "");
  EXPECT_FALSE(std::filesystem::exists(home.userFolder() / "00001.opa"));
}

class TwoFormsOfOneName : public testing::Test {
 protected:
  TwoFormsOfOneName() { home.putUser({{u"A", u"00001.opa"}, {u"B", u"00002.opa"}, {u"A", u"00003.opa"}}); }

  static bool saysThatAnotherStays(Refhost::Dialog& dialog) {
    return dialog.layout().find(u"lbl_DeleteOtherForm")->isVisible();
  }
  OverlayHome home;
};

TEST_F(TwoFormsOfOneName, AreDeletedOneByOneAndTheQuestionSaysSo) {
  OverlayTab tab(home);
  ASSERT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00003.opa=A", "00002.opa=B"));
  std::vector<bool> said;
  tab.onDialog = [&said](Refhost::Dialog& dialog) {
    said.push_back(saysThatAnotherStays(dialog));
    dialog.accept();
  };
  tab.choose(u"00003.opa");
  tab.button(u"btn_OvlDel").click();
  EXPECT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00001.opa=A", "00002.opa=B"));
  EXPECT_FALSE(std::filesystem::exists(home.userFolder() / "00003.opa"));
  EXPECT_TRUE(std::filesystem::exists(home.userFolder() / "00001.opa"));
  tab.choose(u"00001.opa");
  tab.button(u"btn_OvlDel").click();
  EXPECT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00002.opa=B"));
  EXPECT_EQ(home.userIndex(), recordBytes(u"B", u"00002.opa"));
  EXPECT_THAT(said, ElementsAre(true, false));
}

TEST_F(TwoFormsOfOneName, AreTheUsersAndTheLocalDatas) {
  const OverlayHome both;
  both.putUser({{u"Draft", u"00001.opa"}});
  both.putLocal("a", {{u"Draft", u"00005.opa"}});
  auto options = Testing::builtOptions();
  options.settings = {{u"kilnworks.user.localdata.path", (both.folder.path / "localdata").u16string()}};
  OverlayTab tab(both, options);
  ASSERT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00005.opa=Draft"));
  bool isSaid = false;
  tab.onDialog = [&isSaid](Refhost::Dialog& dialog) {
    isSaid = saysThatAnotherStays(dialog);
    dialog.accept();
  };
  tab.choose(u"00005.opa");
  tab.button(u"btn_OvlDel").click();
  EXPECT_TRUE(isSaid);
  EXPECT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00001.opa=Draft"));
}

TEST_F(OverlayStoreTest, KeepsTheEntriesOfOverruledOverlaysInTheirIndexes) {
  home.putUser({{u"Draft", u"00001.opa"}, {u"A", u"00002.opa"}, {u"B", u"00003.opa"}, {u"A", u"00004.opa"}});
  home.putLocal("a", {{u"Draft", u"00005.opa"}});
  open().addOverlay(u"new");
  EXPECT_THAT(records(), ElementsAre("Draft=00005.opa", "A=00004.opa", "B=00003.opa", IsNew("new")));
  store->save();
  EXPECT_THAT(listed(home.userIndex()),
              ElementsAre("Draft=00001.opa", "A=00002.opa", "B=00003.opa", "A=00004.opa", IsNew("new")));
  EXPECT_THAT(world.writes, ElementsAre("profile/overlays/ovlNmFl.flo"));
}

TEST_F(OverlayStoreTest, ListsTheSameFormsAfterASave) {
  home.putUser({{u"A", u"00001.opa"}, {u"A", u"00002.opa"}, {u"A", u"00001.opa"}});
  open().addOverlay(u"new");
  EXPECT_EQ(records().front(), "A=00001.opa");
  store->save();
  Testing::writeFile(home.userFolder() / std::filesystem::path(store->record(1).diskpath), "written");
  const auto before = records();
  open();
  EXPECT_EQ(records(), before);
}

}  // namespace
