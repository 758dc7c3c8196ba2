// The overlay group of the tab: the list, the transitions of a selection, and reactions to changes.
#include "overlay_tab.h"
#include "tests/files/forwarding_disk.h"

namespace {

using Formats::toUtf8;
using Testing::builtOptions;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Testing::widgetOperations;

const std::vector<std::string> nothing;

// The controls that are enabled while an overlay is selected.
const std::vector<std::string> everything = {"lbl_Ovl",
                                             "cmb_EffOverlay",
                                             "but_EffDet",
                                             "btn_OvlDel",
                                             "ePTKWJobOverlayImage_Layering",
                                             "ePTKWJobOverlayImage_PrintPerPage"};

TEST_F(OverlayGroup, ListsNoneAndMultipleThenTheOverlaysInOrderOfTheirNames) {
  OverlayTab tab(home);
  EXPECT_THAT(tab.items(), ElementsAre("None=None", "Multiple=Multiple", "00001.opa=Letterhead", "00002.opa=terms"));
  EXPECT_EQ(tab.selected(), "None");
}

TEST_F(OverlayGroup, BeginsWithNoDestinationAfterItsConnections) {
  const OverlayTab tab(home);
  auto connections = Testing::connections(tab.announced);
  std::erase_if(connections, [](const std::string& line) {
    return line.find("Ovl") == line.npos && line.find("EffOverlay") == line.npos &&
           line.find("but_EffDet") == line.npos && line.find("JobOverlayImage") == line.npos;
  });
  EXPECT_THAT(connections,
              ElementsAre("change cmb_EffOverlay", "click but_EffDet", "click btn_OvlDel",
                          "change ePTKWJobOverlayImage_Layering", "change ePTKWJobOverlayImage_PrintPerPage"));
  EXPECT_EQ(sent(tab.announced).front(), "OvlDestCreated=False");
}

TEST_F(OverlayGroup, SendsOneOverlayWithItsFile) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  const auto events = tab.world->take();
  EXPECT_THAT(sent(events), ElementsAre("OverlaySel=00001.opa,OverlaySourceFileName=" + tab.userFile("00001.opa") +
                                            ",OverlayImage=OverlayImage",
                                        "OverlayName=Letterhead"));
  EXPECT_THAT(widgetOperations(events),
              ElementsAre("cmb_EffOverlay select 2", "btn_OvlDel enable",
                          "ePTKWJobOverlayImage_PrintPerPage setEnabled true", "but_EffDet enable",
                          "ePTKWJobOverlayImage_Layering setEnabled true"));
  EXPECT_EQ(tab.operable(), everything);
}

TEST_F(OverlayGroup, SendsNoneAndIsThenOff) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.set(u"OverlayOccurance", u"PerPage");
  tab.set(u"OverlayLayering", u"Overlay");
  tab.world->take();
  tab.choose(u"None");
  EXPECT_THAT(sent(tab.world->take()),
              ElementsAre("OverlaySel=None,OverlayImage=None",
                          "OverlaySel=None,OverlayOccurance=None,OverlayLayering=Underlay", "OverlayName=None"));
  EXPECT_THAT(tab.operable(), ElementsAre("lbl_Ovl", "cmb_EffOverlay"));
  EXPECT_EQ(tab.value(u"OverlayOccurance"), "None");
  EXPECT_EQ(tab.value(u"OverlayLayering"), "Underlay");
}

TEST_F(OverlayGroup, SendsSeveralOverlaysAndOpensTheirDialogAtOnce) {
  OverlayTab tab(home);
  tab.choose(u"Multiple");
  const auto events = tab.world->take();
  EXPECT_EQ(sent(events).front(), "OverlaySel=Multiple,OverlayImage=MultipleOverlayImage");
  std::vector<std::string> steps;
  for (const auto& event : events) {
    if (event.op == "transition") steps.push_back(Testing::member(event, "pairs").substr(0, 10));
    if (event.op == "load") steps.push_back(Testing::member(event, "url"));
  }
  EXPECT_EQ(steps.front(), "OverlaySel");
  EXPECT_THAT(steps, Contains("chrome://effect/content/dlg_multipleoverlay.xul"));
}

TEST_F(OverlayGroup, OpensTheDialogOfSeveralByTheDetailsButton) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.world->take();
  tab.button(u"but_EffDet").click();
  bool isLoaded = false;
  for (const auto& event : tab.world->take())
    isLoaded |= Testing::member(event, "url") == "chrome://effect/content/dlg_multipleoverlay.xul";
  EXPECT_TRUE(isLoaded);
  EXPECT_EQ(tab.selected(), "00001.opa");
}

TEST_F(OverlayGroup, SelectsSeveralAfterTheirDialogWhereThatIsWhatPrints) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.set(u"OverlayImage", u"MultipleOverlayImage");
  tab.onDialog = [](Refhost::Dialog& dialog) { dialog.cancel(); };
  EXPECT_EQ(tab.selected(), "00001.opa");
  tab.button(u"but_EffDet").click();
  EXPECT_EQ(tab.selected(), "Multiple");
}

TEST_F(OverlayGroup, OffersNoDeletionOfSeveralAndPerPageOnlyWithSeveralPagesOnASheet) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.set(u"OverlaySel", u"Multiple");
  EXPECT_EQ(tab.selected(), "Multiple");
  EXPECT_THAT(tab.operable(), ElementsAre("lbl_Ovl", "cmb_EffOverlay", "but_EffDet", "ePTKWJobOverlayImage_Layering"));
  tab.set(u"Nin1", u"2in1");
  tab.set(u"OverlaySel", u"Multiple");
  EXPECT_THAT(tab.operable(), ElementsAre("lbl_Ovl", "cmb_EffOverlay", "but_EffDet", "ePTKWJobOverlayImage_Layering",
                                          "ePTKWJobOverlayImage_PrintPerPage"));
  EXPECT_EQ(tab.value(u"OverlayName"), "Multiple");
}

TEST_F(OverlayGroup, HasNoOverlayAfterSeveralAreCancelledThatFollowedAnotherChoice) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.onDialog = [](Refhost::Dialog& dialog) { dialog.cancel(); };
  tab.choose(u"Multiple");
  EXPECT_EQ(tab.value(u"OverlaySel"), "None");
  EXPECT_EQ(tab.value(u"OverlayImage"), "None");
  EXPECT_EQ(tab.selected(), "None");
  EXPECT_THAT(tab.operable(), ElementsAre("lbl_Ovl", "cmb_EffOverlay"));
}

TEST(OverlayGroupOfAnEmptyStore, RefusesSeveral) {
  const OverlayHome home;
  OverlayTab tab(home);
  tab.set(u"OverlayLayering", u"Overlay");
  tab.world->take();
  tab.set(u"OverlaySel", u"Multiple");
  EXPECT_EQ(sent(tab.world->take()).front(),
            "OverlaySel=None,OverlayImage=None,MultipleOverlayDetails=,OverlayOccurance=None,OverlayLayering=Underlay");
  EXPECT_EQ(tab.value(u"OverlaySel"), "None");
  EXPECT_EQ(tab.value(u"OverlayLayering"), "Underlay");
  EXPECT_EQ(tab.selected(), "None");
}

TEST_F(OverlayGroup, SelectsByTheValueAndOnlyThenByTheLabel) {
  home.putUser({{u"00002.opa", u"00001.opa"}, {u"other", u"00002.opa"}, {u"third", u"00003.opa"}});
  OverlayTab tab(home);
  tab.set(u"OverlaySel", u"00002.opa");
  EXPECT_EQ(tab.selected(), "00002.opa");
  tab.set(u"OverlaySel", u"third");
  EXPECT_EQ(tab.selected(), "00003.opa");
  tab.set(u"OverlaySel", u"99999.opa");
  EXPECT_EQ(tab.selected(), "None");
}

TEST_F(OverlayGroup, FollowsTheLayeringAndTheOccurrence) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.set(u"OverlayLayering", u"Overlay");
  tab.set(u"OverlayOccurance", u"PerPage");
  EXPECT_TRUE(tab.world->box(u"ePTKWJobOverlayImage_Layering").isChecked());
  EXPECT_TRUE(tab.world->box(u"ePTKWJobOverlayImage_PrintPerPage").isChecked());
  tab.set(u"OverlayLayering", u"Underlay");
  tab.set(u"OverlayOccurance", u"None");
  EXPECT_FALSE(tab.world->box(u"ePTKWJobOverlayImage_Layering").isChecked());
  EXPECT_FALSE(tab.world->box(u"ePTKWJobOverlayImage_PrintPerPage").isChecked());
}

TEST_F(OverlayGroup, WritesTheLayeringAndTheOccurrenceOfItsBoxes) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.world->take();
  for (int i = 0; i < 2; ++i) tab.world->box(u"ePTKWJobOverlayImage_Layering").click();
  for (int i = 0; i < 2; ++i) tab.world->box(u"ePTKWJobOverlayImage_PrintPerPage").click();
  EXPECT_THAT(sent(tab.world->take()), ElementsAre("OverlayLayering=Overlay", "OverlayLayering=Underlay",
                                                   "OverlayOccurance=PerPage", "OverlayOccurance=None"));
}

TEST_F(OverlayGroup, ThatIsUnavailableIsOffWithoutATransition) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.world->box(u"ePTKWJobOverlayImage_Layering").click();
  tab.world->take();
  tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", false);
  const auto events = tab.world->take();
  EXPECT_THAT(widgetOperations(events),
              ElementsAre("lbl_Ovl setEnabled false", "cmb_EffOverlay select 0", "cmb_EffOverlay disable",
                          "but_EffDet disable", "btn_OvlDel disable", "ePTKWJobOverlayImage_Layering setChecked false",
                          "ePTKWJobOverlayImage_Layering setEnabled false",
                          "ePTKWJobOverlayImage_PrintPerPage setChecked false",
                          "ePTKWJobOverlayImage_PrintPerPage setEnabled false"));
  EXPECT_THAT(sent(events), IsEmpty());
  EXPECT_EQ(tab.operable(), nothing);
}

TEST_F(OverlayGroup, IsUnavailableWithAnyOptionOfIts) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.world->preferences.setAvailable(u"OverlayImage", u"MultipleOverlayImage", false);
  EXPECT_EQ(tab.operable(), nothing);
}

TEST_F(OverlayGroup, ThatIsAvailableAgainWithoutAnOverlayHasNothingTicked) {
  OverlayTab tab(home);
  tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", false);
  tab.set(u"OverlayLayering", u"Overlay");
  tab.set(u"OverlayOccurance", u"PerPage");
  const auto isTicked = [&tab](const char16_t* id) { return tab.world->box(id).isChecked(); };
  EXPECT_TRUE(isTicked(u"ePTKWJobOverlayImage_Layering"));
  EXPECT_TRUE(isTicked(u"ePTKWJobOverlayImage_PrintPerPage"));
  tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", true);
  EXPECT_FALSE(isTicked(u"ePTKWJobOverlayImage_Layering"));
  EXPECT_FALSE(isTicked(u"ePTKWJobOverlayImage_PrintPerPage"));
}

TEST_F(OverlayGroup, ThatIsAvailableAgainOffersWhatTheListSelects) {
  OverlayTab tab(home);
  const auto backWith = [&tab](std::int32_t item) {
    tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", false);
    tab.list().select(item);
    tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", true);
    return tab.operable();
  };
  EXPECT_THAT(backWith(0), ElementsAre("lbl_Ovl", "cmb_EffOverlay"));
  EXPECT_THAT(backWith(1), ElementsAre("lbl_Ovl", "cmb_EffOverlay", "but_EffDet", "ePTKWJobOverlayImage_Layering"));
  EXPECT_EQ(backWith(2), everything);
  tab.set(u"Nin1", u"4in1");
  EXPECT_THAT(backWith(1), ElementsAre("lbl_Ovl", "cmb_EffOverlay", "but_EffDet", "ePTKWJobOverlayImage_Layering",
                                       "ePTKWJobOverlayImage_PrintPerPage"));
}

TEST_F(OverlayGroup, ThatIsAvailableAgainShowsTheOverlayThatPrints) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.world->box(u"ePTKWJobOverlayImage_Layering").click();
  tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", false);
  EXPECT_EQ(tab.selected(), "None");
  tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", true);
  EXPECT_EQ(tab.selected(), "00001.opa");
  EXPECT_EQ(tab.operable(), everything);
  EXPECT_TRUE(tab.world->box(u"ePTKWJobOverlayImage_Layering").isChecked());
}

TEST_F(OverlayGroup, IsTurnedOffByNoneThatIsShownForAnOverlayThatIsNotInTheList) {
  OverlayTab tab(home);
  tab.set(u"OverlayImage", u"OverlayImage");
  tab.set(u"OverlaySel", u"gone.opa");
  EXPECT_EQ(tab.selected(), "None");
  tab.choose(u"None");
  EXPECT_EQ(tab.value(u"OverlaySel"), "None");
  EXPECT_EQ(tab.value(u"OverlayImage"), "None");
}

TEST_F(OverlayGroup, FollowsTheOccurrencesAvailabilityAndNotTheLayerings) {
  OverlayTab tab(home);
  tab.choose(u"00001.opa");
  tab.world->preferences.setAvailable(u"OverlayOccurance", u"PerPage", false);
  tab.world->preferences.setAvailable(u"OverlayLayering", u"Overlay", false);
  EXPECT_FALSE(tab.isEnabled(u"ePTKWJobOverlayImage_PrintPerPage"));
  EXPECT_TRUE(tab.isEnabled(u"ePTKWJobOverlayImage_Layering"));
}

TEST_F(OverlayGroup, ShowsTheThumbnailOfTheSelectedOverlay) {
  Testing::writeFile(home.userFolder() / "00001.bmp", bitmap(2, 3));
  OverlayTab tab(home);
  EXPECT_EQ(tab.picture(), "");
  tab.choose(u"00001.opa");
  EXPECT_EQ(tab.picture(), tab.userFile("00001.bmp"));
  tab.choose(u"00002.opa");
  EXPECT_EQ(tab.picture(), "") << "its thumbnail is no bitmap";
  for (int i = 0; i < 2; ++i) {
    tab.choose(u"00001.opa");
    EXPECT_EQ(tab.picture(), tab.userFile("00001.bmp"));
    if (i == 0)
      tab.choose(u"None");
    else
      tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", false);
    EXPECT_EQ(tab.picture(), "");
  }
}

TEST_F(OverlayGroup, ShowsTheThumbnailOfAnOverlayThatIsSelectedElsewhere) {
  Testing::writeFile(home.userFolder() / "00001.bmp", bitmap(2, 3));
  OverlayTab tab(home);
  tab.set(u"OverlaySel", u"00001.opa");
  EXPECT_EQ(tab.picture(), tab.userFile("00001.bmp"));
}

TEST_F(OverlayGroup, OffersAndShowsWhatIsSelectedWithoutAList) {
  auto options = withUserData();
  options.withoutWidgets.insert(u"cmb_EffOverlay");
  OverlayTab tab(home, options);
  tab.set(u"OverlaySel", u"Multiple");
  tab.set(u"OverlayImage", u"MultipleOverlayImage");
  EXPECT_EQ(tab.picture(), "chrome://base/content/bitmaps/tips_UD_tb.bmp");
  tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", false);
  tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", true);
  EXPECT_TRUE(tab.isEnabled(u"but_EffDet"));
  EXPECT_FALSE(tab.isEnabled(u"btn_OvlDel"));
}

TEST_F(OverlayGroup, TellsOfUserDataByItsPicturesInTheTabOnly) {
  constexpr const char* tip = "chrome://base/content/bitmaps/tips_UD_tb.bmp";
  OverlayTab tab(home, withUserData());
  EXPECT_EQ(tab.picture(), tip);
  EXPECT_EQ(tab.captionScope(), "global");
  tab.choose(u"00001.opa");
  EXPECT_EQ(tab.picture(), "") << "the overlay's thumbnail is no bitmap";
  tab.choose(u"None");
  EXPECT_EQ(tab.picture(), tip);
  auto options = withUserData();
  options.mode = Refhost::Mode::pdc;
  OverlayTab defaults(home, options);
  EXPECT_EQ(defaults.picture(), "");
  EXPECT_EQ(defaults.captionScope(), "-");
  OverlayTab off(home);
  EXPECT_EQ(off.picture(), "");
  EXPECT_EQ(off.captionScope(), "-");
}

TEST_F(OverlayGroup, WorksWithEveryWidgetMissing) {
  for (const char16_t* id : {u"lbl_Ovl", u"cmb_EffOverlay", u"but_EffDet", u"btn_OvlDel", u"img_EffOverlay",
                             u"ePTKWJobOverlayImage_Layering", u"ePTKWJobOverlayImage_PrintPerPage"}) {
    auto options = withUserData();
    options.withoutWidgets.insert(id);
    OverlayTab tab(home, options);
    for (const char16_t* selection : {u"00001.opa", u"Multiple", u"None"}) tab.set(u"OverlaySel", selection);
    tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", false);
    tab.world->preferences.setAvailable(u"OverlayImage", u"OverlayImage", true);
    EXPECT_THAT(tab.world->face.failures, IsEmpty()) << toUtf8(id);
  }
}

TEST_F(OverlayGroup, TakesNoPathForUserDataWhereNoneIsKeptApart) {
  OverlayTab tab(home);
  tab.set(u"OverlaySourceFileName", u"C:\\local\\userdata\\00001.opa");
  tab.set(u"OverlaySel", u"00001.opa");
  EXPECT_EQ(tab.selected(), "00001.opa");
}

TEST_F(OverlayGroup, ComesBackWithItsSelection) {
  auto options = builtOptions();
  options.properties = {{u"OverlaySel", u"00002.opa"},
                        {u"OverlayImage", u"OverlayImage"},
                        {u"OverlaySourceFileName", (home.userFolder() / "00002.opa").u16string()}};
  OverlayTab tab(home, options);
  EXPECT_EQ(tab.selected(), "00002.opa");
  EXPECT_EQ(tab.value(u"OverlayName"), "terms");
  EXPECT_EQ(tab.operable(), everything);
}

}  // namespace
