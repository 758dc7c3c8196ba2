// Downloaded overlays in the dialog for several overlays.
#include "tests/overlay/multi_dialog.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace {

// The user's own overlay and a downloaded one with the same file name.
class DownloadedOverlay : public MultiDialog {
 protected:
  DownloadedOverlay() : MultiDialog("A") {
    world.set(u"kilnworks.tips.userdata.support", u"True");
    home.putLocal("office", {{u"D", u"DDDDD.opa"}, {u"A of the office", u"AAAAA.opa"}});
    Testing::writeFile(home.localFolder("office") / "AAAAA.bmp", bitmap(1, 1));
  }
  std::string officePath(const std::string& name) {
    return Formats::toUtf8(world.host.path((home.localFolder("office") / name).u16string())->text().view());
  }
};

TEST_F(DownloadedOverlay, IsPrintedFromItsOwnFile) {
  saved([](OpenDialog& dialog) {
    dialog.drop("DDDDD.opa", 1);
    dialog.source().choose(1);
    EXPECT_EQ(dialog.source().selectedItem()->text().view(), u"A of the office");
    dialog.click("btn_MulOvlAdd");
    dialog.source().choose(0);
    dialog.click("btn_MulOvlAddManual");
    dialog.type(3, "3");
  });
  EXPECT_EQ(value(u"OverlaySourceFileName"),
            officePath("DDDDD.opa") + ";All$" + officePath("AAAAA.opa") + ";Even$" + path('A') + ";3$");
}

TEST_F(DownloadedOverlay, IsFoundAgainUnlessTheUserHasOneOfItsFileName) {
  set(u"MultipleOverlayDetails", Formats::toUtf16(details({"DDDDD.opa;All", "AAAAA.opa;Odd"})));
  saved([](OpenDialog&) {});
  EXPECT_EQ(value(u"OverlaySourceFileName"), officePath("DDDDD.opa") + ";All$" + path('A') + ";Odd$");
}

// The list is: none, several, A, A of the office, D. The default is the last but one of the three overlays.
TEST_F(DownloadedOverlay, IsTheDefaultWhereTheListHasItInThatPlace) {
  open([](OpenDialog& dialog) { EXPECT_EQ(dialog.source().selectedItem()->text().view(), u"A of the office"); });
  for (const std::string& saved : {std::string(), details({})}) {
    set(u"MultipleOverlayDetails", Formats::toUtf16(saved));
    this->saved([](OpenDialog&) {});
    EXPECT_EQ(value(u"OverlaySourceFileName"), officePath("AAAAA.opa") + ";All$") << saved;
  }
}

// The list of the dialog is: A, A of the office, D.
TEST_F(DownloadedOverlay, IsDroppedWhereItIsTheSelectedOneOfItsFileName) {
  for (const std::int32_t selected : {0, 1, 2}) {
    set(u"MultipleOverlayDetails", Formats::toUtf16(details({"DDDDD.opa;All"})));
    saved([selected](OpenDialog& dialog) {
      dialog.source().choose(2);
      dialog.source().choose(selected);
      dialog.drop("AAAAA.opa", 1);
    });
    EXPECT_EQ(value(u"OverlaySourceFileName"), (selected == 1 ? officePath("AAAAA.opa") : path('A')) + ";All$")
        << selected;
  }
}

TEST_F(DownloadedOverlay, HasItsOwnThumbnail) {
  openOn(details({"AAAAA.opa;All"}), [this](OpenDialog& dialog) {
    auto& items = dialog.source().items();
    EXPECT_EQ(pictureOf(*items.at(0)->image()), thumbnail('A'));
    EXPECT_EQ(pictureOf(*items.at(1)->image()), home.localFolder("office") / "AAAAA.bmp");
    for (const std::int32_t item : {1, 0}) {
      dialog.source().choose(item);
      dialog.click("btn_MulOvlAddManual");
    }
    EXPECT_EQ(pictureOf(*dialog.image(1).image()), thumbnail('A'));
    EXPECT_EQ(pictureOf(*dialog.image(3).image()), home.localFolder("office") / "AAAAA.bmp");
    EXPECT_EQ(pictureOf(*dialog.image(4).image()), thumbnail('A'));
  });
}

}  // namespace
