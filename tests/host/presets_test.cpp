// Presets: how they are kept, and what choosing one does.
#include "host/preset_choice.h"
#include "host/widgets/list.h"
#include "tests/files/cut_disk.h"
#include "tests/support/host_world.h"

#include <gmock/gmock.h>

namespace {

using Refhost::Preset;
using Refhost::PresetChoice;
using Refhost::Presets;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class PresetsOfAHome : public testing::Test {
 protected:
  Presets presets(Files::Disk& disk = Files::realDisk()) const {
    return {disk, home.path, std::chrono::milliseconds(0)};
  }

  std::vector<std::string> names() {
    std::vector<std::string> all;
    for (const Preset& preset : presets().read([this](const std::string& problem) { told.push_back(problem); }))
      all.push_back(Formats::toUtf8(preset.name));
    return all;
  }

  const Testing::TemporaryFolder home;
  std::vector<std::string> told;
};

TEST_F(PresetsOfAHome, AreKeptByTheirNames) {
  EXPECT_THAT(names(), IsEmpty());
  presets().save({u"b/..\\c", u"tev", {{u"MirrorImage", u"MirrorImage"}, {u"OverlayName", u"Ä"}}});
  presets().save({u"a", u"kvt", {}});
  EXPECT_THAT(names(), ElementsAre("a", "b/..\\c"));
  const Preset kept = presets().read([](const auto&) {}).back();
  EXPECT_EQ(kept.model, u"tev");
  EXPECT_THAT(kept.values, ElementsAre(std::pair(u"MirrorImage", u"MirrorImage"), std::pair(u"OverlayName", u"Ä")));
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(PresetsOfAHome, AreReplacedRenamedAndDeleted) {
  presets().save({u"a", u"tev", {}});
  presets().save({u"b", u"tev", {}});
  presets().save({u"a", u"kvt", {}});
  EXPECT_THAT(names(), ElementsAre("a", "b"));
  EXPECT_EQ(presets().read([](const auto&) {}).front().model, u"kvt");
  presets().rename(u"a", u"c");
  EXPECT_THAT(names(), ElementsAre("b", "c"));
  presets().remove(u"b");
  EXPECT_THAT(names(), ElementsAre("c"));
}

TEST_F(PresetsOfAHome, RefuseNamesThatNobodyCouldTellApart) {
  presets().save({u"a", u"tev", {}});
  presets().save({u"b", u"tev", {}});
  EXPECT_THROW(presets().rename(u"a", u"b"), std::runtime_error);
  EXPECT_THROW(presets().rename(u"z", u"y"), std::runtime_error);
  EXPECT_THROW(presets().remove(u"z"), std::runtime_error);
  EXPECT_THROW(presets().save({u" ", u"tev", {}}), std::runtime_error);
  EXPECT_THROW(presets().save({std::u16string(Presets::longestName + 1, u'x'), u"tev", {}}), std::runtime_error);
  EXPECT_THAT(names(), ElementsAre("a", "b"));
}

TEST_F(PresetsOfAHome, LeaveOutAndTellAFileThatIsDamaged) {
  presets().save({u"a", u"tev", {}});
  Testing::writeFile(home.path / "presets" / "preset-7.json", "{");
  Testing::writeFile(home.path / "presets" / "other.txt", "{");
  EXPECT_THAT(names(), ElementsAre("a"));
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_THAT(told.front(), HasSubstr("preset-7.json is damaged"));
}

TEST_F(PresetsOfAHome, AreReplacedWholeOrNotAtAllWheneverTheProgramIsKilled) {
  presets().save({u"a", u"old", {}});
  CutDisk whole;
  presets(whole).save({u"a", u"new", {}});
  ASSERT_GT(whole.operations, 3);
  for (int at = 1; at <= whole.operations; ++at) {
    presets().save({u"a", u"old", {}});
    CutDisk disk;
    disk.killedAt = at;
    bool wasKilled = false;
    try {
      presets(disk).save({u"a", u"new", {}});
    } catch (const Killed&) {
      wasKilled = true;
    }
    EXPECT_TRUE(wasKilled) << at;
    EXPECT_THAT(names(), ElementsAre("a")) << at;
    EXPECT_THAT(presets().read([](const auto&) {}).front().model, AnyOf(u"old", u"new")) << at;
    EXPECT_THAT(told, IsEmpty()) << at;
  }
}

class ChoiceOfAPreset : public testing::Test {
 protected:
  static Refhost::Options options(const Testing::TemporaryFolder& home) {
    auto options = Testing::builtOptions();
    options.home = home.path;
    return options;
  }

  const Testing::TemporaryFolder home;
  Testing::World world{options(home)};
  PresetChoice& presets = world.preferences.presets();
};

TEST_F(ChoiceOfAPreset, AppliesItsValuesAsOneAction) {
  world.preferences.set(u"MirrorImage", u"MirrorImage");
  world.preferences.set(u"Rotate180", u"Rotate180");
  presets.save(u"Both");
  EXPECT_FALSE(presets.isChanged());
  world.preferences.restoreDefaults();
  EXPECT_TRUE(presets.isChanged());
  EXPECT_EQ(presets.chosen(), u"Both");
  presets.choose(u"Both");
  EXPECT_FALSE(presets.isChanged());
  EXPECT_EQ(world.value(u"MirrorImage"), u"MirrorImage");
  world.preferences.undo();
  EXPECT_EQ(world.value(u"MirrorImage"), u"None");
  EXPECT_EQ(world.value(u"Rotate180"), u"None");
  EXPECT_TRUE(presets.isChanged());
}

TEST_F(ChoiceOfAPreset, IsKnownAgainByItsValues) {
  presets.save(u"As delivered");
  world.preferences.set(u"MirrorImage", u"MirrorImage");
  presets.save(u"Mirrored");
  auto again = options(home);
  again.properties = {{u"MirrorImage", u"MirrorImage"}};
  EXPECT_EQ(Testing::World(again).preferences.presets().chosen(), u"Mirrored");
  again.properties = {{u"Rotate180", u"Rotate180"}};
  EXPECT_EQ(Testing::World(again).preferences.presets().chosen(), std::nullopt);
  again.properties = {};
  again.locale = "de-DE";
  EXPECT_EQ(Testing::World(again).preferences.presets().chosen(), u"As delivered") << "in any language";
}

TEST_F(ChoiceOfAPreset, TellsWhatIsGone) {
  auto& marks = world.widget<Refhost::ListBox>(u"lst_selectedWatermark");
  marks.choose(1);
  presets.save(u"Marked");
  EXPECT_FALSE(presets.choose(u"Marked").watermark);
  world.face.onModal = [](Refhost::Dialog& dialog) { dialog.accept(); };
  world.widget<Refhost::Button>(u"btn_WMDel").click();
  const auto gone = presets.choose(u"Marked");
  EXPECT_TRUE(gone.watermark);
  EXPECT_FALSE(gone.overlay);
  EXPECT_FALSE(presets.isChanged());
}

TEST_F(ChoiceOfAPreset, TellsOfAnOverlayThatIsGone) {
  Presets(Files::realDisk(), home.path, std::chrono::milliseconds(0))
      .save({u"On paper",
             u"standard",
             {{u"OverlaySel", u"12345.opa"},
              {u"OverlayImage", u"OverlayImage"},
              {u"OverlaySourceFileName", Files::pathText(home.path / "profile" / "overlays" / "12345.opa")}}});
  EXPECT_TRUE(presets.choose(u"On paper").overlay);
}

TEST_F(ChoiceOfAPreset, IsForgottenWhenThePresetIsDeleted) {
  EXPECT_THROW(presets.remove(), std::runtime_error);
  EXPECT_THROW(presets.choose(u"None such"), std::runtime_error);
  presets.save(u"a");
  presets.rename(u"b");
  EXPECT_EQ(presets.chosen(), u"b");
  presets.remove();
  EXPECT_EQ(presets.chosen(), std::nullopt);
  EXPECT_THAT(presets.names(), IsEmpty());
}

}  // namespace
