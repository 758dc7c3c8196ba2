// The files of a selection: kept, replaced by the store's, or removed.
#include "overlay_tab.h"

namespace {

using Formats::toUtf8;
using testing::ElementsAre;

class OverlaySourceFile : public OverlayGroup {};

TEST_F(OverlaySourceFile, KeepsASourceFileThatIsThere) {
  OverlayTab tab(home);
  Testing::writeFile(home.folder.path / "elsewhere.opa", "");
  const auto source = (home.folder.path / "elsewhere.opa").u16string();
  tab.set(u"OverlaySourceFileName", source);
  tab.set(u"OverlaySel", u"00001.opa");
  EXPECT_EQ(tab.value(u"OverlaySourceFileName"), inSlashes(toUtf8(source)));
}

TEST_F(OverlaySourceFile, FindsAMovedSourceFileByItsNameInTheStore) {
  OverlayTab tab(home);
  for (const char16_t* source : {u"C:\\old\\00001.opa", u"/old/00001.opa", u"00001.opa", u"/old\\00001.opa"}) {
    tab.set(u"OverlaySourceFileName", source);
    tab.set(u"OverlaySel", u"00001.opa");
    EXPECT_EQ(tab.value(u"OverlaySourceFileName"), tab.userFile("00001.opa")) << toUtf8(source);
  }
}

TEST_F(OverlaySourceFile, DropsASourceFileThatNobodyHas) {
  OverlayTab tab(home);
  for (const char16_t* source : {u"C:\\old\\00009.opa", u"..", u"/", u"None"}) {
    tab.set(u"OverlaySourceFileName", source);
    tab.set(u"OverlaySel", u"00001.opa");
    EXPECT_EQ(tab.value(u"OverlaySourceFileName"), "") << toUtf8(source);
  }
}

TEST_F(OverlaySourceFile, DropsASourceFileThatIsGoneFromTheStoresFolderToo) {
  OverlayTab tab(home);
  std::filesystem::remove(home.userFolder() / "00001.opa");
  tab.set(u"OverlaySourceFileName", u"/old/00001.opa");
  tab.set(u"OverlaySel", u"00001.opa");
  EXPECT_EQ(tab.value(u"OverlaySourceFileName"), "");
}

TEST_F(OverlaySourceFile, ValidatesEachFileOfSeveral) {
  OverlayTab tab(home);
  Testing::writeFile(home.folder.path / "here.opa", "");
  const std::string here = (home.folder.path / "here.opa").generic_string();
  tab.set(u"OverlaySourceFileName",
          Formats::toUtf16(here + ";1;2$C:\\old\\00002.opa;Even$/gone/00007.opa;Odd$;$no pages$/old/00001.opa$"));
  tab.world->take();
  tab.set(u"OverlaySel", u"Multiple");
  const std::string expected = here + ";1;2$" + tab.userFile("00002.opa") + ";Even$" + tab.userFile("00001.opa") + ";$";
  EXPECT_THAT(sent(tab.world->take()), ElementsAre("OverlaySourceFileName=" + expected, "OverlayName=Multiple"));
  EXPECT_EQ(tab.value(u"OverlaySourceFileName"), expected);
}

TEST_F(OverlaySourceFile, HasNoSourceWhenTheOnlyFileOfSeveralIsGone) {
  OverlayTab tab(home);
  tab.set(u"OverlaySourceFileName", u"/gone/00007.opa;All$");
  tab.set(u"OverlaySel", u"Multiple");
  EXPECT_EQ(tab.value(u"OverlaySourceFileName"), "");
}

TEST_F(OverlaySourceFile, SendsNothingForASourceThatIsValid) {
  OverlayTab tab(home);
  tab.set(u"OverlaySourceFileName", Formats::toUtf16(tab.userFile("00001.opa") + ";All$"));
  tab.world->take();
  tab.set(u"OverlaySel", u"Multiple");
  EXPECT_THAT(sent(tab.world->take()), ElementsAre("OverlayName=Multiple"));
}

TEST_F(OverlaySourceFile, ReadsASourceOfTenMegabytesInTimeLinearInIt) {
  OverlayTab tab(home);
  tab.set(u"OverlaySourceFileName", std::u16string(10'000'000, u'$'));
  tab.set(u"OverlaySel", u"Multiple");
  EXPECT_EQ(tab.value(u"OverlaySourceFileName"), "");
}

}  // namespace
