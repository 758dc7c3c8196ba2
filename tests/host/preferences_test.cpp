// User actions on the preferences as a whole, and their dialogs.
#include "formats/text.h"
#include "host/preferences.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

using Testing::builtOptions;
using Testing::TemporaryFolder;
using Testing::World;

constexpr auto confirmDialog = u"chrome://base/content/dlg_confirmdelete.xul";

std::string failureOfOpening(Refhost::Options options) {
  Testing::RecordingFace face;
  Refhost::Preferences preferences(std::move(options), face);
  try {
    preferences.open();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "it did not fail";
}

TEST(Opening, FailsForALibraryThatIsNotThere) {
  auto options = builtOptions();
  options.plugin = "/nowhere/Zorvueffect.so";
  EXPECT_EQ(failureOfOpening(options), "There is no plug-in library /nowhere/Zorvueffect.so.");
}

TEST(Opening, FailsForAFileThatIsNoLibrary) {
  const TemporaryFolder folder;
  auto options = builtOptions();
  options.plugin = folder.path / "Zorvueffect.so";
  Testing::writeFile(options.plugin, "no library");
  const std::string sentence = failureOfOpening(options);
  const std::string file = options.plugin.string();
  EXPECT_TRUE(sentence.starts_with("The plug-in library " + file + " cannot be loaded: ")) << sentence;
  EXPECT_EQ(sentence.find(file), sentence.rfind(file)) << sentence;
}

TEST(Opening, FailsForAnUnknownProperty) {
  auto options = builtOptions();
  options.properties = {{u"Nothing", u"x"}};
  EXPECT_EQ(failureOfOpening(options), "The model standard has no property Nothing.");
}

TEST(Opening, FailsForABrokenLayoutAndLeavesNothingBehind) {
  const TemporaryFolder folder;
  Testing::copyResources(folder.path / "r");
  Testing::writeFile(folder.path / "r" / "effect" / "content" / "tab_effect.xul", "<tabpanel>\n");
  auto options = builtOptions();
  options.resources = folder.path / "r";
  const long before = Refhost::heap().blocks();
  const std::string sentence = failureOfOpening(options);
  EXPECT_NE(sentence.find("tab_effect.xul:2: "), sentence.npos) << sentence;
  EXPECT_EQ(Refhost::heap().blocks(), before);
}

TEST(Opening, FailsForAModelWithoutPropertiesThatTheTabNeedsAndNamesThemAll) {
  const TemporaryFolder folder;
  Testing::writeFile(folder.path / "bare.xml", "<model name='bare' label='Bare'><property name='PaperSize' value='A4'/>"
                                               "<property name='ColourMode' value='Colour'/>"
                                               "<property name='Nin1' value='None'/></model>");
  auto options = builtOptions();
  options.model = (folder.path / "bare.xml").string();
  EXPECT_EQ(failureOfOpening(options),
            "The model bare lacks properties that the plug-in effect needs: WatermarkSel, Watermark, FirstPageOnly, "
            "WatermarkOccurance, OverlaySel, OverlayImage, OverlayOccurance, OverlayLayering, OverlayImageCreate, "
            "MultipleOverlayDetails, OverlaySourceFileName, OverlayName, OverlayImageName, OverlayDestFileName, "
            "OvlDestCreated, CancelJob, NegativeImage, MirrorImage, Rotate180, Rotate180ForA3LD.");
}

TEST(Home, HoldsUserAndProfileAndItsLockAndNothingElse) {
  const TemporaryFolder folder;
  auto options = builtOptions();
  options.home = folder.path / "home";
  World world(options);
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(options.home))
    names.insert(entry.path().filename().string());
  EXPECT_EQ(names, (std::set<std::string>{Files::homeLockName, "profile", "user"}));
  EXPECT_EQ(world.preferences.setting(u"kilnworks.user.path"), (options.home / "user").generic_u16string());
  EXPECT_EQ(world.preferences.setting(u"kilnworks.user.userprofile"), (options.home / "profile").generic_u16string());
  EXPECT_EQ(world.preferences.setting(u"kilnworks.pdlsettings.folder"), u"overlays");
  EXPECT_EQ(world.preferences.setting(u"kilnworks.user.localdata.path"),
            (options.home / "localdata").generic_u16string());
}

TEST(Home, ThatIsTemporaryGoesWithTheRun) {
  std::filesystem::path home;
  {
    World world;
    home = world.preferences.home();
    EXPECT_TRUE(std::filesystem::is_directory(home / "user"));
  }
  EXPECT_FALSE(std::filesystem::exists(home));
}

TEST(Settings, CanBeSetAndRemoved) {
  auto options = builtOptions();
  options.settings = {{u"kilnworks.user.localdata.path", std::nullopt}, {u"my.key", u"value"}};
  World world(options);
  EXPECT_EQ(world.preferences.setting(u"kilnworks.user.localdata.path"), std::nullopt);
  EXPECT_EQ(world.preferences.setting(u"my.key"), u"value");
  EXPECT_EQ(world.preferences.setting(u"UIMode"), u"DocProp");
}

TEST(Undo, BringsBackTheStateBeforeEachAction) {
  World world;
  EXPECT_FALSE(world.preferences.canUndo());
  world.box(u"chk_EffRot180Deg").click();
  world.box(u"ePTKWPageNegativeImage").click();
  world.preferences.undo();
  EXPECT_EQ(world.value(u"NegativeImage"), u"None");
  EXPECT_FALSE(world.box(u"ePTKWPageNegativeImage").isChecked());
  EXPECT_EQ(world.value(u"Rotate180"), u"Rotate180");
  world.preferences.undo();
  EXPECT_EQ(world.value(u"Rotate180"), u"None");
  EXPECT_FALSE(world.preferences.canUndo());
  world.preferences.undo();
}

TEST(Undo, IsNotAffectedByWhatIsTraced) {
  World world;
  world.preferences.dispatch([&] {
    world.preferences.trace().record({"write", {}});
    world.preferences.trace().record({"delete", {}});
    world.preferences.set(u"MirrorImage", u"MirrorImage");
  });
  EXPECT_TRUE(world.preferences.canUndo());
}

TEST(RestoreDefaults, TakesAllBackAndCanBeUndone) {
  World world;
  world.box(u"chk_EffRot180Deg").click();
  world.box(u"ePTKWPageMirrorImage").click();
  world.preferences.restoreDefaults();
  EXPECT_EQ(world.value(u"Rotate180"), u"None");
  EXPECT_FALSE(world.box(u"ePTKWPageMirrorImage").isChecked());
  world.preferences.undo();
  EXPECT_EQ(world.value(u"Rotate180"), u"Rotate180");
  EXPECT_TRUE(world.box(u"ePTKWPageMirrorImage").isChecked());
}

TEST(DeviceTab, SetsThePropertiesThatRulesDependOn) {
  auto options = builtOptions();
  options.model = "kvt";
  World world(options);
  auto* tab = world.preferences.gui()->tabs().front().root.get();
  Refhost::ComboBox* colour = nullptr;
  Refhost::walk(*tab, [&](Refhost::WidgetNode& widget) {
    if (widget.attribute("property") == u"ColourMode") colour = dynamic_cast<Refhost::ComboBox*>(&widget);
  });
  ASSERT_NE(colour, nullptr);
  world.box(u"ePTKWPageNegativeImage").click();
  colour->choose(1);
  EXPECT_EQ(world.value(u"ColourMode"), u"Monochrome");
  EXPECT_EQ(world.value(u"NegativeImage"), u"None");
  EXPECT_FALSE(world.box(u"ePTKWPageNegativeImage").isVisible());
  world.preferences.undo();
  EXPECT_EQ(colour->selectedIndex(), 0);
  EXPECT_EQ(world.value(u"NegativeImage"), u"Negative");
}

TEST(CheckBox, CannotBeClickedWhileItIsDisabledOrHidden) {
  World world;
  auto& box = world.box(u"ePTKWPageMirrorImage");
  box.disable();
  box.click();
  EXPECT_FALSE(box.isChecked());
  box.enable();
  box.hide();
  box.click();
  EXPECT_FALSE(box.isChecked());
  EXPECT_EQ(world.value(u"MirrorImage"), u"None");
}

// Records the events of a dialog.
struct Answers : Kiln::SignalTarget {
  void onOk(Kiln::XUL::SubDialogEventArg& event) {
    ++oks;
    if (vetoes > 0) {
      --vetoes;
      event.vetoClose();
    }
  }
  void onCancel(Kiln::XUL::SubDialogEventArg&) { ++cancels; }
  int oks = 0;
  int cancels = 0;
  int vetoes = 0;
};

class Dialogs : public testing::Test {
 protected:
  Kiln::SmartPtr<Refhost::Dialog> open() {
    const auto dialog = Kiln::smartCast<Refhost::Dialog>(world.preferences.gui()->openDialog(confirmDialog));
    connect(*dialog->okSignal(), answers, &Answers::onOk);
    connect(*dialog->cancelSignal(), answers, &Answers::onCancel);
    return dialog;
  }

  World world;
  Answers answers;
};

TEST_F(Dialogs, ThatAreModalReturnWhenTheyHaveClosed) {
  const auto dialog = open();
  world.take();
  world.face.onModal = [](Refhost::Dialog& shown) { EXPECT_TRUE(shown.accept()); };
  dialog->runModally();
  EXPECT_FALSE(dialog->isOpen());
  EXPECT_EQ(answers.oks, 1);
  const auto events = world.take();
  EXPECT_EQ(events.front().op, "dialog");
  EXPECT_EQ(Testing::member(events.front(), "modal"), "true");
}

TEST_F(Dialogs, StayOpenWhenOkIsVetoed) {
  const auto dialog = open();
  answers.vetoes = 1;
  world.face.onModal = [&](Refhost::Dialog& shown) {
    EXPECT_FALSE(shown.accept());
    EXPECT_TRUE(shown.isOpen());
    EXPECT_TRUE(shown.accept());
  };
  dialog->runModally();
  EXPECT_EQ(answers.oks, 2);
  EXPECT_EQ(answers.cancels, 0);
}

TEST_F(Dialogs, CannotBeAcceptedWhileOkIsDisabled) {
  const auto dialog = open();
  dialog->okButton()->disable();
  dialog->show();
  EXPECT_FALSE(dialog->accept());
  EXPECT_TRUE(dialog->isOpen());
  EXPECT_EQ(answers.oks, 0);
}

TEST_F(Dialogs, ThatAreNotModalAreHeldWhileTheyAreOpen) {
  open()->show();
  ASSERT_EQ(world.preferences.gui()->openDialogs().size(), 1U);
  const Kiln::SmartPtr<Refhost::Dialog> held = world.preferences.gui()->openDialogs().back();
  EXPECT_FALSE(held->isModal());
  held->cancel();
  EXPECT_EQ(answers.cancels, 1);
  EXPECT_TRUE(world.preferences.gui()->openDialogs().empty());
}

TEST_F(Dialogs, FindTheWidgetsOfTheTab) {
  const auto dialog = open();
  EXPECT_TRUE(dialog->parentWidgetById(u"chk_EffRot180Deg"));
  EXPECT_FALSE(dialog->widgetById(u"chk_EffRot180Deg"));
}

TEST_F(Dialogs, CannotBeOpenedTwice) {
  const auto dialog = open();
  dialog->show();
  EXPECT_THROW(dialog->show(), Kiln::Exception);
}

TEST_F(Dialogs, AreCancelledInnermostFirstWhenThePreferencesClose) {
  const auto outer = open();
  outer->show();
  const auto inner = Kiln::smartCast<Refhost::Dialog>(outer->openDialog(confirmDialog));
  inner->show();
  world.preferences.cancel();
  EXPECT_FALSE(inner->isOpen());
  EXPECT_FALSE(outer->isOpen());
  EXPECT_EQ(answers.cancels, 1);
}

TEST_F(Dialogs, ThatCannotBeLoadedAreNone) {
  EXPECT_FALSE(world.preferences.gui()->openDialog(u"chrome://base/content/nothing.xul"));
  EXPECT_EQ(world.face.failures.size(), 1U);
}

TEST(Failures, OfAHandlerStopAtTheDispatchAndAreTold) {
  World world;
  struct Thrower : Kiln::SignalTarget {
    void fail(Kiln::XUL::EventArg<Kiln::XUL::Toggle>) { throw Refhost::failure("The handler failed."); }
  } thrower;
  auto& box = world.box(u"ePTKWPageMirrorImage");
  connect(*box.clickSignal(), thrower, &Thrower::fail);
  box.click();
  EXPECT_EQ(world.face.failures, std::vector<std::string>{"The handler failed."});
  world.box(u"chk_EffRot180Deg").click();
  EXPECT_EQ(world.value(u"Rotate180"), u"Rotate180");
}

}  // namespace
