// The overlay group of a tab with downloaded overlays beside the user's.
#include "overlay_tab.h"

namespace {

using Formats::toUtf8;
using testing::ElementsAre;

// The user's data is in the folder that the print path recognises.
struct UserDataHome : OverlayHome {
  UserDataHome() {
    putUser({{u"form", u"00001.opa"}, {u"mine", u"00002.opa"}});
    put(local(), {{u"form", u"00001.opa"}, {u"a theirs", u"00003.opa"}});
  }
  Path local() const { return folder.path / "local" / "userdata" / "department" / "overlays"; }
  Refhost::Options options() const {
    auto options = withUserData();
    options.settings.emplace_back(u"kilnworks.user.localdata.path", (folder.path / "local" / "userdata").u16string());
    return options;
  }
};

TEST(DownloadedOverlays, AreTheMarkedOnesWhereTheSourceIsUserData) {
  const UserDataHome home;
  OverlayTab tab(home, home.options());
  EXPECT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00003.opa=a theirs*", "00001.opa=form",
                                       "00001.opa=form*", "00002.opa=mine"));
  tab.set(u"OverlaySourceFileName", (home.local() / "00001.opa").u16string());
  tab.set(u"OverlaySel", u"00001.opa");
  EXPECT_EQ(tab.list().selection(), 4);
  for (const char16_t* source : {u"C:\\local\\userdata\\department\\overlays\\00001.opa", u"/gone/local/userdata/1.opa",
                                 u"/gone\\local/userdata\\1.opa"})
    for (const char16_t* selection : {u"form", u"00001.opa"}) {
      tab.set(u"OverlaySourceFileName", source);
      tab.set(u"OverlaySel", u"None");
      tab.set(u"OverlaySel", selection);
      EXPECT_EQ(tab.list().selection(), 4) << toUtf8(source) << ' ' << toUtf8(selection);
    }
}

TEST(DownloadedOverlays, HaveThePictureOfAllPlugins) {
  const UserDataHome home;
  OverlayTab tab(home, home.options());
  const auto icon = Kiln::smartCast<Refhost::Image>(tab.list().items().at(2)->image());
  ASSERT_TRUE(icon);
  EXPECT_EQ(icon->scope, u"global");
  EXPECT_FALSE(tab.list().items().at(3)->image());
}

TEST(DownloadedOverlays, AreNotMeantByAnUnmarkedOnesNameOrFileName) {
  const UserDataHome home;
  OverlayTab tab(home, home.options());
  for (const char16_t* selection : {u"mine", u"00002.opa"}) {
    tab.set(u"OverlaySourceFileName", u"C:\\local\\userdata\\x.opa");
    tab.set(u"OverlaySel", selection);
    EXPECT_EQ(tab.list().selection(), 0) << toUtf8(selection);
  }
}

TEST(DownloadedOverlays, AreMeantWhereTheUserHasNoneOfTheFileName) {
  const UserDataHome home;
  OverlayTab tab(home, home.options());
  tab.set(u"OverlaySourceFileName", u"/old/00003.opa");
  tab.set(u"OverlaySel", u"00003.opa");
  EXPECT_EQ(tab.selected(), "00003.opa");
  EXPECT_EQ(tab.value(u"OverlaySourceFileName"), (home.local() / "00003.opa").generic_string());
}

// Another file than the selected overlay's may be printed; that of its own kind goes before.
TEST(DownloadedOverlays, AreFoundByTheNameOfTheFileThatIsPrinted) {
  const UserDataHome home;
  OverlayTab tab(home, home.options());
  const std::tuple<std::u16string, std::string, std::filesystem::path> cases[] = {
      {u"00003.opa", "00001.opa", home.local()},
      {u"00002.opa", "00001.opa", home.userFolder()},
      {u"00003.opa", "00002.opa", home.userFolder()},
      {u"00002.opa", "00003.opa", home.local()}};
  for (const auto& [selection, file, folder] : cases) {
    tab.set(u"OverlaySourceFileName", u"/old/" + Formats::toUtf16(file));
    tab.set(u"OverlaySel", selection);
    EXPECT_EQ(tab.value(u"OverlaySourceFileName"), (folder / file).generic_string()) << toUtf8(selection);
  }
}

// The source decides where it is there; where it is not, the user's own goes before.
TEST(DownloadedOverlays, AreToldFromTheUsersByTheSourceInAnyFolder) {
  OverlayHome home;
  home.putUser({{u"second", u"00001.opa"}});
  home.putLocal("office", {{u"first", u"00001.opa"}});
  auto options = withUserData();
  options.settings.emplace_back(u"kilnworks.user.localdata.path", (home.folder.path / "localdata").u16string());
  OverlayTab tab(home, options);
  ASSERT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00001.opa=first*", "00001.opa=second"));
  const std::pair<std::filesystem::path, std::int32_t> sources[] = {
      {home.localFolder("office") / "00001.opa", 2}, {home.userFolder() / "00001.opa", 3}, {"/old/00001.opa", 3}};
  for (const auto& [source, item] : sources) {
    tab.set(u"OverlaySourceFileName", source.u16string());
    tab.set(u"OverlaySel", u"None");
    tab.set(u"OverlaySel", u"00001.opa");
    EXPECT_EQ(tab.list().selection(), item) << source;
  }
}

TEST(DownloadedOverlays, AreNotPreferredElsewhere) {
  const UserDataHome home;
  OverlayTab tab(home, home.options());
  tab.set(u"OverlaySourceFileName", (home.userFolder() / "00001.opa").u16string());
  tab.set(u"OverlaySel", u"00001.opa");
  EXPECT_EQ(tab.list().selection(), 3);
}

TEST(DownloadedOverlays, StayChosenBesideAnOwnOneOfTheSameFileName) {
  const UserDataHome home;
  OverlayTab tab(home, home.options());
  for (const std::int32_t chosen : {4, 3, 4}) {
    tab.list().choose(chosen);
    EXPECT_EQ(tab.list().selection(), chosen);
    const auto folder = chosen == 4 ? home.local() : home.userFolder();
    EXPECT_EQ(tab.value(u"OverlaySourceFileName"), (folder / "00001.opa").generic_string());
  }
}

TEST(DownloadedOverlays, ShowTheirOwnThumbnail) {
  const UserDataHome home;
  for (const auto& folder : {home.local(), home.userFolder()}) Testing::writeFile(folder / "00001.bmp", bitmap(2, 3));
  OverlayTab tab(home, home.options());
  for (const std::int32_t chosen : {4, 3, 4}) {
    tab.list().choose(chosen);
    EXPECT_EQ(tab.picture(), ((chosen == 4 ? home.local() : home.userFolder()) / "00001.bmp").generic_string());
  }
}

TEST(DownloadedOverlays, AreDeletedWithTheirOwnFile) {
  const UserDataHome home;
  OverlayTab tab(home, home.options());
  tab.list().choose(4);
  tab.remove();
  EXPECT_FALSE(std::filesystem::exists(home.local() / "00001.opa"));
  EXPECT_TRUE(std::filesystem::exists(home.userFolder() / "00001.opa"));
  EXPECT_THAT(tab.items(),
              ElementsAre("None=None", "Multiple=Multiple", "00003.opa=a theirs*", "00001.opa=form", "00002.opa=mine"));
  EXPECT_EQ(bytesOf(OverlayHome::index(home.local())), recordBytes(u"a theirs", u"00003.opa"));
}

TEST(DownloadedOverlays, AreFoundAgainWhereTheyHaveMovedAmongSeveral) {
  const UserDataHome home;
  OverlayTab tab(home, home.options());
  tab.set(u"OverlaySourceFileName", u"C:\\local\\userdata\\x\\00001.opa;All$C:\\overlays\\00001.opa;2$");
  tab.set(u"OverlaySel", u"Multiple");
  EXPECT_EQ(tab.value(u"OverlaySourceFileName"),
            (home.local() / "00001.opa").generic_string() + ";All$" + tab.userFile("00001.opa") + ";2$");
  EXPECT_EQ(tab.selected(), "Multiple");
}

}  // namespace
