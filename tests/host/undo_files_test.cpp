// Undo and redo of actions that change the user's watermarks and overlays.
#include "host/overlay_job.h"
#include "host/widgets/list.h"
#include "tests/support/host_world.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

namespace {

using Testing::bytesOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class UndoOfFiles : public testing::Test {
 protected:
  Refhost::Options options() const {
    auto options = Testing::builtOptions();
    options.home = home.path;
    return options;
  }

  std::filesystem::path watermarkFile() const { return home.path / "user" / "ZVeffect.xml"; }

  Refhost::ListBox& list() { return world.widget<Refhost::ListBox>(u"lst_selectedWatermark"); }

  std::vector<std::string> names(Refhost::SelectorNode& of) {
    std::vector<std::string> all;
    for (std::int32_t i = 0; i < of.items().count(); ++i)
      all.push_back(Formats::toUtf8(of.items().at(i)->displayedText().view()));
    return all;
  }
  std::vector<std::string> watermarks() { return names(list()); }
  std::vector<std::string> overlays() { return names(world.widget<Refhost::ComboBox>(u"cmb_EffOverlay")); }

  void choose(std::string_view name) {
    const auto all = watermarks();
    list().choose(static_cast<std::int32_t>(std::ranges::find(all, name) - all.begin()));
  }

  // Presses a button that opens a dialog, and accepts that, with a text if it is the editor.
  void press(std::u16string_view id, const std::u16string& text = {}) {
    world.face.onModal = [&text](Refhost::Dialog& dialog) {
      if (auto* box = dynamic_cast<Refhost::TextBox*>(dialog.layout().find(u"txt_EffWMTxtBox")))
        box->edit(text, Refhost::Edit::typed);
      dialog.accept();
    };
    world.widget<Refhost::Button>(id).click();
  }

  void print(const std::string& pdf) {
    world.face.onModal = [](Refhost::Dialog& dialog) { dialog.accept(); };
    world.face.jobStep = u"Letterhead";
    Refhost::printIntoOverlay(world.preferences, world.face, {pdf, "picture"});
  }

  // The contents of the overlays and of their pictures.
  std::multiset<std::string> overlayFiles() const {
    std::multiset<std::string> contents;
    for (const auto& entry : std::filesystem::directory_iterator(home.path / "profile" / "overlays"))
      if (entry.path().extension() != ".flo") contents.insert(bytesOf(entry.path()));
    return contents;
  }

  const Testing::TemporaryFolder home;
  Testing::World world{options()};
  Refhost::Preferences& preferences = world.preferences;
};

TEST_F(UndoOfFiles, TakesAWatermarkThatWasAddedAwayAndRedoBringsItBack) {
  const std::string before = bytesOf(watermarkFile());
  press(u"btn_WMAdd", u"Mine");
  EXPECT_THAT(watermarks(), Contains("Mine"));
  const std::string after = bytesOf(watermarkFile());
  const auto values = preferences.model().values();

  preferences.undo();
  EXPECT_THAT(watermarks(), Not(Contains("Mine")));
  EXPECT_EQ(bytesOf(watermarkFile()), before);
  EXPECT_EQ(world.value(u"WatermarkSel"), u"0");
  EXPECT_FALSE(preferences.canUndo());

  preferences.redo();
  EXPECT_THAT(watermarks(), Contains("Mine"));
  EXPECT_EQ(bytesOf(watermarkFile()), after);
  EXPECT_EQ(preferences.model().values(), values);
  EXPECT_FALSE(preferences.canRedo());
  EXPECT_THAT(world.face.failures, IsEmpty());
}

TEST_F(UndoOfFiles, BringsBackAWatermarkThatWasEditedAndThenDeleted) {
  press(u"btn_WMAdd", u"Mine");
  press(u"btn_WMEdit", u"Yours");
  EXPECT_THAT(watermarks(), Contains("Yours"));
  press(u"btn_WMDel");
  EXPECT_THAT(watermarks(), Not(Contains("Yours")));
  preferences.undo();
  EXPECT_THAT(watermarks(), Contains("Yours"));
  EXPECT_EQ(world.value(u"WatermarkText"), u"Yours");
  preferences.undo();
  EXPECT_THAT(watermarks(), Contains("Mine"));
  EXPECT_EQ(world.value(u"WatermarkText"), u"Mine");
  preferences.redo();
  EXPECT_EQ(world.value(u"WatermarkText"), u"Yours");
}

TEST_F(UndoOfFiles, CanGoOnWithTheStoreAfterwards) {
  press(u"btn_WMAdd", u"Mine");
  preferences.undo();
  press(u"btn_WMAdd", u"Other");
  EXPECT_THAT(watermarks(), Contains("Other"));
  EXPECT_THAT(bytesOf(watermarkFile()), Not(HasSubstr("Mine")));
  EXPECT_FALSE(preferences.canRedo()) << "a new action follows another past";
  EXPECT_THAT(world.face.failures, IsEmpty());
}

TEST_F(UndoOfFiles, KeepsTheActionsBeforeAndAfter) {
  preferences.set(u"MirrorImage", u"MirrorImage");
  press(u"btn_WMAdd", u"Mine");
  preferences.set(u"MirrorImage", u"None");
  preferences.undo();
  EXPECT_EQ(world.value(u"MirrorImage"), u"MirrorImage");
  preferences.undo();
  EXPECT_THAT(watermarks(), Not(Contains("Mine")));
  preferences.undo();
  EXPECT_EQ(world.value(u"MirrorImage"), u"None");
  for (int i = 0; i < 3; ++i) preferences.redo();
  EXPECT_EQ(world.value(u"MirrorImage"), u"None");
  EXPECT_THAT(watermarks(), Contains("Mine"));
}

TEST_F(UndoOfFiles, LeavesFilesThatAnotherProgramHasChanged) {
  press(u"btn_WMAdd", u"Mine");
  std::string others = bytesOf(watermarkFile());
  others.insert(others.rfind("</Watermarks>"), "<WM_9><label>Theirs</label><value>WM_9</value></WM_9>");
  Testing::writeFile(watermarkFile(), others);
  preferences.undo();
  EXPECT_EQ(bytesOf(watermarkFile()), others);
  ASSERT_THAT(world.face.failures, SizeIs(1));
  EXPECT_THAT(world.face.failures.front(), HasSubstr("was changed meanwhile"));
  EXPECT_FALSE(preferences.canUndo());
  EXPECT_FALSE(preferences.canRedo());
}

TEST_F(UndoOfFiles, CanBeTriedAgainWhenAnotherProgramHasTheHome) {
  auto impatient = options();
  impatient.longestWait = std::chrono::milliseconds(0);
  Testing::World other(impatient);
  other.face.onModal = [](Refhost::Dialog& dialog) { dialog.accept(); };
  auto& marks = other.widget<Refhost::ListBox>(u"lst_selectedWatermark");
  const auto count = marks.items().count();
  marks.choose(1);
  other.widget<Refhost::Button>(u"btn_WMDel").click();
  ASSERT_EQ(marks.items().count(), count - 1);
  {
    const Files::HomeLock lock(Files::realDisk(), home.path);
    other.preferences.undo();
    EXPECT_THAT(other.face.failures, Contains(HasSubstr("in use by another program")));
    EXPECT_EQ(marks.items().count(), count - 1);
  }
  other.preferences.undo();
  EXPECT_EQ(marks.items().count(), count);
}

TEST_F(UndoOfFiles, TakesAnOverlayThatWasPrintedAwayAndRedoBringsItBack) {
  print("captured");
  EXPECT_THAT(overlays(), Contains("Letterhead"));
  preferences.undo();
  EXPECT_THAT(overlays(), Not(Contains("Letterhead")));
  EXPECT_THAT(overlayFiles(), IsEmpty());
  preferences.redo();
  EXPECT_THAT(overlays(), Contains("Letterhead"));
  EXPECT_EQ(overlayFiles(), (std::multiset<std::string>{"captured", "picture"}));
  EXPECT_THAT(world.face.failures, IsEmpty());
}

TEST_F(UndoOfFiles, BringsBackAnOverlayThatWasReplaced) {
  print("first");
  print("second");
  EXPECT_THAT(overlayFiles(), Contains("second"));
  preferences.undo();
  EXPECT_EQ(overlayFiles(), (std::multiset<std::string>{"first", "picture"}));
  EXPECT_THAT(overlays(), Contains("Letterhead"));
}

TEST_F(UndoOfFiles, ForgetsThePastWhenTheFilesAreTooLargeToKeep) {
  print("captured");
  print(std::string(Refhost::FileChanges::mostBytes, 'x'));
  EXPECT_FALSE(preferences.canUndo());
  EXPECT_THAT(overlays(), Contains("Letterhead"));
}

TEST_F(UndoOfFiles, KnowsWhatTheUserDid) {
  EXPECT_EQ(preferences.nextToUndo(), nullptr);
  preferences.actions().click(world.box(u"ePTKWPageMirrorImage"));
  ASSERT_NE(preferences.nextToUndo(), nullptr);
  EXPECT_EQ(preferences.nextToUndo()->command, "click");
  EXPECT_EQ(preferences.nextToUndo()->arguments, std::vector<std::u16string>{u"ePTKWPageMirrorImage"});
  preferences.undo();
  ASSERT_NE(preferences.nextToRedo(), nullptr);
  EXPECT_EQ(preferences.nextToRedo()->arguments, std::vector<std::u16string>{u"ePTKWPageMirrorImage"});
}

}  // namespace
