// The dialog for several overlays: its initial state, and the result of closing it.
#include "tests/overlay/multi_dialog.h"
#include "tests/support/locales.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Testing::transitions;

const std::vector<std::string> defaults = {"BBBBB All", "- ?", "- ", "- ", "- ", "- ", "- ", "- "};

// The given slots, padded with free ones.
std::vector<std::string> withFree(std::vector<std::string> slots) {
  const std::vector<std::string> free = {"- ?", "- ?", "- ", "- ", "- ", "- ", "- ", "- "};
  for (std::size_t i = slots.size(); i < free.size(); ++i) slots.push_back(free[i]);
  return slots;
}

std::string imageOf(Kiln::XUL::ListItem& item) {
  const auto picture = item.image();
  return picture ? pictureOf(*picture).filename().string() : "";
}

TEST_F(MultiDialog, ListsTheOverlaysOfTheTabInItsOrder) {
  home.putUser({{u"zebra", u"11111.opa"}, {u"Apple", u"22222.opa"}, {u"bear", u"33333.opa"}});
  Testing::writeFile(home.userFolder() / "22222.bmp", bitmap(1, 1));
  open([](OpenDialog& dialog) {
    std::vector<std::string> items;
    auto& list = dialog.source().items();
    for (std::int32_t i = 0; i < list.count(); ++i) {
      const auto item = Kiln::smartCast<Refhost::ListItem>(list.at(i));
      items.push_back(Formats::toUtf8(item->value().view()) + "=" + Formats::toUtf8(item->text().view()) + " " +
                      Formats::toUtf8(item->colour()));
    }
    EXPECT_THAT(items, ElementsAre("22222.opa=Apple #FF0000", "33333.opa=bear #FF0000", "11111.opa=zebra #FF0000"));
    EXPECT_EQ(imageOf(*list.at(0)), "22222.bmp");
  });
}

TEST_F(MultiDialog, ListsAnOverlayByTheTextThatTheTabShows) {
  home.putUser({{u"$IDS_WM_DRAFT;", u"11111.opa"}});
  open([](OpenDialog& dialog) { EXPECT_EQ(dialog.source().items().at(0)->text().view(), u"Draft"); });
}

// Overwrites what it frees, so that nothing of it can be read any more.
class OverwritingAllocator final : public Kiln::Allocator {
 public:
  void* allocate(std::size_t bytes) noexcept override {
    auto* block = static_cast<std::size_t*>(std::malloc(bytes + prefix));
    if (block == nullptr) return nullptr;
    *block = bytes;
    return reinterpret_cast<char*>(block) + prefix;
  }
  void deallocate(void* memory) noexcept override {
    if (memory == nullptr) return;
    auto* block = reinterpret_cast<std::size_t*>(static_cast<char*>(memory) - prefix);
    std::memset(memory, 0x5A, *block);
    std::free(block);
  }

 private:
  static constexpr std::size_t prefix = alignof(std::max_align_t);
};

// An import may replace the tab's store while the dialog is open.
TEST_F(MultiDialog, KeepsItsStoreWhileItIsOpen) {
  OverwritingAllocator allocator;
  opening = [&] { return Kiln::SmartPtr<Overlays>(new (allocator) Overlays(world.host, world.manager, false)); };
  open([this](OpenDialog& dialog) {
    tabsStore.reset();
    dialog.drop("AAAAA.opa", 1);
    dialog.accept();
  });
  EXPECT_EQ(value(u"OverlaySourceFileName"), path('A') + ";All$");
}

TEST_F(MultiDialog, TellsOverlaysOfOneFileNameApart) {
  home.putLocal("x", {{u"X", u"AAAAA.opa"}, {u"Y", u"BBBBB.opa"}});
  const std::string theirs =
      Formats::toUtf8(world.host.path((home.localFolder("x") / "AAAAA.opa").u16string())->text().view());
  const std::string both = theirs + ";Even$" + path('A') + ";Odd$";
  open([](OpenDialog& dialog) {
    dialog.clearByMenu(1);
    dialog.source().choose(3);  // A, B, C, X, Y
    dialog.drop("AAAAA.opa", 1);
    dialog.choose("rad1_Even");
    dialog.source().choose(0);
    dialog.drop("AAAAA.opa", 2);
    dialog.accept();
  });
  EXPECT_EQ(value(u"OverlaySourceFileName"), both);
  open([](OpenDialog& dialog) { dialog.accept(); });
  EXPECT_EQ(value(u"OverlaySourceFileName"), both) << "OK alone changes nothing";
}

TEST_F(MultiDialog, ShowsTheErrorPageForAThumbnailThatIsMissing) {
  std::filesystem::remove(thumbnail('A'));
  open([](OpenDialog& dialog) {
    EXPECT_EQ(imageOf(*dialog.source().items().at(0)), "ovl_error.bmp");
    dialog.drop("AAAAA.opa", 3);
    EXPECT_EQ(dialog.slot(3), "ovl_error ");
  });
}

TEST_F(MultiDialog, ShowsTheErrorPageForAnOverlayWhoseFileHasAnotherName) {
  home.putUser({{u"A", u"AAAAA.pdf"}, {u"B", u"B.opa.x"}, {u"C", u"C.opa.opa"}});
  for (const char* name : {"AAAAA.bmp", "AAAAA.pdf.bmp", "B.bmp", "C.bmp", "C.opa.bmp"})
    Testing::writeFile(home.userFolder() / name, bitmap(1, 1));
  open([](OpenDialog& dialog) {
    EXPECT_EQ(imageOf(*dialog.source().items().at(0)), "ovl_error.bmp");
    EXPECT_EQ(imageOf(*dialog.source().items().at(1)), "B.bmp");
    EXPECT_EQ(imageOf(*dialog.source().items().at(2)), "C.bmp");
  });
}

TEST_F(MultiDialog, LeavesOutAnOverlayThatCannotEvenBeShownAsAnError) {
  Testing::TemporaryFolder resources;
  Testing::copyResources(resources.path / "all");
  std::filesystem::remove(resources.path / "all/effect/content/bitmaps/ovl_error.bmp");
  std::filesystem::remove(thumbnail('A'));
  world.chrome = Refhost::ChromeFolders(resources.path / "all");
  open([](OpenDialog& dialog) {
    ASSERT_EQ(dialog.source().items().count(), 2);
    EXPECT_EQ(dialog.source().items().at(0)->value().view(), u"BBBBB.opa");
  });
}

TEST_F(MultiDialog, HasADefaultOverlayThatItsListLeavesOut) {
  Testing::TemporaryFolder resources;
  Testing::copyResources(resources.path / "all");
  std::filesystem::remove(resources.path / "all/effect/content/bitmaps/ovl_error.bmp");
  std::filesystem::remove(thumbnail('B'));
  world.chrome = Refhost::ChromeFolders(resources.path / "all");
  EXPECT_EQ(saved([](OpenDialog& dialog) {
              EXPECT_EQ(dialog.source().selectedItem()->value().view(), u"AAAAA.opa");
              EXPECT_EQ(dialog.slot(1), "nothing All");
            }),
            details({"BBBBB.opa;All"}));
}

TEST_F(MultiDialog, RegistersTheBlankPage) {
  openOn(details({"AAAAA.opa;All"}), [this](OpenDialog& dialog) {
    EXPECT_EQ(dialog.image(2).resource(), u"BlankBitmap");
    EXPECT_EQ(blankPage, u"chrome://effect/content/bitmaps/xx02_NOI.bmp");
  });
}

TEST_F(MultiDialog, OpensOnAnEmptyValueWithTheDefaults) { EXPECT_EQ(shown(""), defaults); }

TEST_F(MultiDialog, SelectsTheDefaultOverlayInTheList) {
  open([](OpenDialog& dialog) { EXPECT_EQ(dialog.source().selectedItem()->value().view(), u"BBBBB.opa"); });
}

TEST_F(MultiDialog, SelectsTheFirstOfTheDefaultOverlaysNames) {
  home.putUser({{u"A", u"11111.opa"}, {u"B", u"11111.opa"}});
  open([](OpenDialog& dialog) { EXPECT_EQ(dialog.source().selectedItem()->text().view(), u"A"); });
}

class OneOverlay : public MultiDialog {
 protected:
  OneOverlay() : MultiDialog("A") {}
};

TEST_F(OneOverlay, IsTheDefault) {
  EXPECT_EQ(shown(""), withFree({"AAAAA All"}));
  set(u"MultipleOverlayDetails", u"");
  EXPECT_EQ(saved([](OpenDialog&) {}), details({"AAAAA.opa;All"}));
}

class TwoOverlays : public MultiDialog {
 protected:
  TwoOverlays() : MultiDialog("AB") {}
};

TEST_F(TwoOverlays, HaveTheFirstAsTheDefault) {
  EXPECT_EQ(shown(""), withFree({"AAAAA All"}));
  openOn(details({"BBBBB.opa;All"}), [](OpenDialog& dialog) {
    dialog.select("BBBBB.opa");
    dialog.click("but_MulOvlRestDef");
    EXPECT_EQ(dialog.slot(1), "AAAAA All");
    EXPECT_EQ(dialog.source().selectedItem()->value().view(), u"AAAAA.opa");
  });
}

class NoOverlays : public MultiDialog {
 protected:
  NoOverlays() : MultiDialog("") {}
};

TEST_F(NoOverlays, LeaveEverythingFreeAndNothingToAdd) {
  EXPECT_EQ(shown(""), withFree({}));
  open([](OpenDialog& dialog) {
    EXPECT_EQ(dialog.source().items().count(), 0);
    EXPECT_FALSE(dialog.widget<Refhost::Button>("btn_MulOvlAdd").isEnabled());
    EXPECT_FALSE(dialog.widget<Refhost::Button>("btn_MulOvlAddManual").isEnabled());
    dialog.click("but_MulOvlRestDef");
    EXPECT_EQ(dialog.slots(), withFree({}));
  });
}

TEST_F(NoOverlays, LeaveNothingToAddWhateverIsSaved) {
  openOn("rubbish", [](OpenDialog& dialog) {
    EXPECT_FALSE(dialog.widget<Refhost::Button>("btn_MulOvlAdd").isEnabled());
    EXPECT_FALSE(dialog.widget<Refhost::Button>("btn_MulOvlAddManual").isEnabled());
  });
}

TEST_F(MultiDialog, OffersToAddWhileAnOverlayIsSelected) {
  openOn(details({"AAAAA.opa;All"}), [](OpenDialog& dialog) {
    for (const char* id : {"btn_MulOvlAdd", "btn_MulOvlAddManual"}) {
      auto& button = dialog.widget<Refhost::Button>(id);
      EXPECT_TRUE(button.isEnabled());
      button.setEnabled(false);
    }
    dialog.source().choose(1);
    for (const char* id : {"btn_MulOvlAdd", "btn_MulOvlAddManual"})
      EXPECT_TRUE(dialog.widget<Refhost::Button>(id).isEnabled());
  });
}

TEST_F(MultiDialog, OpensOnWhatIsSaved) {
  EXPECT_EQ(shown("AAAAA.opa;Odd$BBBBB.opa;Even$;$;$;$;$;$;$"), withFree({"AAAAA Odd", "BBBBB Even"}));
  EXPECT_EQ(shown(details({"AAAAA.opa;Even", ";", "BBBBB.opa;1,3,5-9", ";", "CCCCC.opa;"})),
            withFree({"AAAAA Even", "- ?", "BBBBB 1,3,5-9", "- ", "CCCCC "}));
}

TEST_F(MultiDialog, OpensWithTheDefaultOverlayInAFirstSlotThatIsFree) {
  EXPECT_EQ(shown(";$AAAAA.opa;Even$;$;$;$;$;$;$"), withFree({"BBBBB All", "AAAAA Even"}));
}

TEST_F(MultiDialog, OpensWithTheDefaultsWhereAnOverlayIsUnknown) {
  EXPECT_EQ(shown(details({"AAAAA.opa;Odd", "99999.opa;Even"})), defaults);
  EXPECT_EQ(shown(details({"AAAAA.opa;Odd", ";", ";", ";", ";", ";", ";", "99999.opa;1"})), defaults);
}

TEST_F(MultiDialog, OpensWithTheDefaultsWhereAFileIsGone) {
  set(u"MultipleOverlayDetails", Formats::toUtf16(details({"AAAAA.opa;Odd", "CCCCC.opa;Even"})));
  afterTheStoreIsRead = [this] { std::filesystem::remove(file('C')); };
  open([](OpenDialog& dialog) { EXPECT_EQ(dialog.slots(), defaults); });
}

TEST_F(MultiDialog, KeepsSavedMastersApart) {
  EXPECT_EQ(shown(details({"AAAAA.opa;Odd", "BBBBB.opa;Odd"})), withFree({"AAAAA Odd", "BBBBB Even"}));
  EXPECT_EQ(shown(details({"AAAAA.opa;Even", "BBBBB.opa;Even"})), withFree({"AAAAA Even", "BBBBB Odd"}));
  EXPECT_EQ(shown(details({"AAAAA.opa;All", "BBBBB.opa;Odd"})), withFree({"AAAAA All", "BBBBB Odd"}));
  EXPECT_EQ(shown(details({"AAAAA.opa;Odd", "BBBBB.opa;All"})), withFree({"AAAAA Odd", "BBBBB Even"}));
}

TEST_F(MultiDialog, AcceptedSetsFourPropertiesInOneTransition) {
  openOn(details({"AAAAA.opa;Odd", ";", "CCCCC.opa;2-3", "BBBBB.opa;"}), [this](OpenDialog& dialog) {
    take();
    dialog.accept();
  });
  EXPECT_THAT(transitions(take()),
              ElementsAre("OverlaySel=Multiple,OverlayImage=MultipleOverlayImage,OverlaySourceFileName=" + path('A') +
                          ";Odd$" + path('C') + ";2-3$,MultipleOverlayDetails=" +
                          details({"AAAAA.opa;Odd", ";", "CCCCC.opa;2-3", "BBBBB.opa;"})));
}

TEST_F(OneOverlay, OnAllPagesAloneIsSavedInOneEntryAndSevenFreeOnes) {
  EXPECT_EQ(saved([](OpenDialog& dialog) {
              dialog.clearByMenu(1);
              dialog.add("AAAAA.opa");
            }),
            "AAAAA.opa;All$;$;$;$;$;$;$;$");
  EXPECT_EQ(value(u"OverlaySourceFileName"), path('A') + ";All$");
}

TEST_F(MultiDialog, SavesAManualOverlayWithoutPagesButDoesNotPrintIt) {
  EXPECT_EQ(saved([](OpenDialog& dialog) { dialog.addManual("CCCCC.opa"); }),
            details({"BBBBB.opa;All", ";", "CCCCC.opa;"}));
  EXPECT_EQ(value(u"OverlaySourceFileName"), path('B') + ";All$");
}

TEST_F(MultiDialog, CancelledOnTheFirstChoiceGoesBackToNone) {
  set(u"OverlayImage", u"MultipleOverlayImage");
  set(u"OverlaySel", u"Multiple");
  open([this](OpenDialog& dialog) {
    dialog.drop("AAAAA.opa", 3);
    take();
    dialog.cancel();
  });
  EXPECT_THAT(transitions(take()), ElementsAre("OverlaySel=None,OverlayImage=None"));
  EXPECT_EQ(value(u"MultipleOverlayDetails"), "");
}

TEST_F(MultiDialog, CancelledLaterChangesNothing) {
  set(u"OverlaySel", u"Multiple");
  openOn(details({"AAAAA.opa;Odd"}), [this](OpenDialog& dialog) {
    dialog.clearByMenu(1);
    take();
    dialog.cancel();
  });
  EXPECT_THAT(transitions(take()), IsEmpty());
}

TEST_F(MultiDialog, CancelledWithAnotherSelectionChangesNothing) {
  set(u"OverlaySel", u"AAAAA.opa");
  open([this](OpenDialog& dialog) {
    take();
    dialog.cancel();
  });
  EXPECT_THAT(transitions(take()), IsEmpty());
}

TEST_F(MultiDialog, ThatCannotBeLoadedIsCancelled) {
  Testing::TemporaryFolder resources;
  Testing::copyResources(resources.path / "all");
  Testing::writeFile(resources.path / "all/effect/content/dlg_multipleoverlay.xul", "<dialog");
  world.chrome = Refhost::ChromeFolders(resources.path / "all");
  set(u"OverlaySel", u"Multiple");
  take();
  open([](OpenDialog&) { FAIL() << "there is no dialog"; });
  EXPECT_THAT(transitions(take()), ElementsAre("OverlaySel=None,OverlayImage=None"));
}

TEST_F(MultiDialog, RestoresTheDefaults) {
  openOn(details({"AAAAA.opa;Odd", "CCCCC.opa;Even", "AAAAA.opa;1", ";", ";", ";", ";", "BBBBB.opa;8"}),
         [](OpenDialog& dialog) {
           dialog.click("but_MulOvlRestDef");
           EXPECT_EQ(dialog.slots(), defaults);
         });
}

TEST_F(MultiDialog, SelectsTheOverlayOfTheDefaultsThatItRestores) {
  openOn(details({"AAAAA.opa;All"}), [](OpenDialog& dialog) {
    dialog.select("CCCCC.opa");
    dialog.click("but_MulOvlRestDef");
    EXPECT_EQ(dialog.source().selectedItem()->value().view(), u"BBBBB.opa");
  });
}

TEST_F(MultiDialog, ShowsItsHelpInEveryLanguage) {
  for (const std::string& locale : Testing::locales) {
    OverlayStore abroad(home.folder.path, Files::realDisk(), locale);
    abroad.host.showHelpTopic(u"chrome://base/locale/help.chm", u"5100");
    ASSERT_EQ(abroad.face.helpAddresses.size(), 1U);
    const auto page = abroad.chrome.file(abroad.face.helpAddresses[0]);
    ASSERT_TRUE(page);
    EXPECT_THAT(bytesOf(*page), testing::HasSubstr("<html lang=\"" + locale + "\">"));
  }
}

// All texts of a widget that a user can read, as set.
std::vector<std::u16string> textsOf(Refhost::WidgetNode& widget) {
  std::vector<std::u16string> texts = {widget.label(), widget.attribute("tooltiptext"), widget.attribute("accesskey")};
  if (auto* list = dynamic_cast<Refhost::SelectorNode*>(&widget))
    for (std::int32_t i = 0; i < list->items().count(); ++i) texts.push_back(list->items().at(i)->text().str());
  if (auto* image = dynamic_cast<Refhost::ImageBox*>(&widget))
    for (const auto& item : image->menu()) texts.push_back(item.label);
  return texts;
}

TEST_F(MultiDialog, IsTranslatedWithAccessKeysOfItsOwn) {
  for (const std::string& locale : Testing::locales) {
    const Refhost::StringTables strings(world.chrome, locale);
    Refhost::WidgetWorld widgets{world.trace, strings, {}, [](const auto&) {}, [](auto&) {}};
    const auto layout = Refhost::LayoutReader(world.chrome, {}).read(Effect::Address::multipleOverlay, widgets);
    EXPECT_FALSE(strings.resolve(layout.title).starts_with(u"$IDS_"));
    std::multiset<std::u16string> keys;
    Refhost::walk(*layout.root, [&](Refhost::WidgetNode& widget) {
      for (const std::u16string& text : textsOf(widget))
        EXPECT_FALSE(strings.resolve(text).starts_with(u"$IDS_")) << locale << ' ' << Formats::toUtf8(text);
      const std::u16string key = strings.resolve(widget.attribute("accesskey"));
      if (!key.empty()) keys.insert({Formats::lowerCase(key.front())});
    });
    EXPECT_EQ(keys.size(), 20U) << locale;
    for (const std::u16string& key : keys) EXPECT_EQ(keys.count(key), 1U) << locale << ' ' << Formats::toUtf8(key);
  }
}

TEST_F(MultiDialog, AsksForItsHelpTopic) {
  open([this](OpenDialog& dialog) {
    dialog.click("btn_MulOvlHelp");
    EXPECT_THAT(world.face.helpTopics, ElementsAre(u"5100"));
    EXPECT_THAT(world.face.helpAddresses, ElementsAre(u"chrome://base/content/en-US/help/5100.html"));
  });
}

TEST_F(MultiDialog, WorksWithoutAnyOfItsWidgets) {
  without = {u"lib_MulOvlSource", u"btn_MulOvlAdd",     u"btn_MulOvlAddManual", u"cmb_MulOvlGroupsToClear",
             u"but_MulOvlClear",  u"but_MulOvlRestDef", u"btn_MulOvlHelp",      u"rad1_All",
             u"rad1_Even",        u"rad1_Odd",          u"rad2_Even",           u"rad2_Odd",
             u"cmb_EffOverlay"};
  without.insert(std::begin(Effect::WidgetId::slotImages), std::end(Effect::WidgetId::slotImages));
  without.insert(std::begin(Effect::WidgetId::slotPages), std::end(Effect::WidgetId::slotPages));
  const std::string value = details({"AAAAA.opa;Odd", "BBBBB.opa;Even", "CCCCC.opa;7"});
  set(u"MultipleOverlayDetails", Formats::toUtf16(value));
  EXPECT_EQ(saved([](OpenDialog&) {}), value);
}

}  // namespace
