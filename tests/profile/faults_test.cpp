// Homes on a disk on which every operation fails in turn.
#include "files/file_set.h"
#include "host/profiles/home_import.h"
#include "tests/files/every_fault.h"
#include "tests/profile/plugin_run.h"

namespace {

using namespace Testing;
using namespace Refhost;
using testing::IsEmpty;

class FaultyHome : public ProfileHomes {
 protected:
  FaultyHome() {
    putWatermarkFile(home, watermark("WM_1", "Draft"));
    put(home / "localdata" / "a" / "ZVeffect.xml", watermarkFile(watermark("WM_a", "From a")));
    putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
    PluginRun run(home);
    for (const auto& [name, value] : TracePairs{{u"WatermarkSel", u"WM_1"},
                                                {u"Watermark", u"Watermark"},
                                                {u"OverlaySel", u"12345.opa"},
                                                {u"OverlayImage", u"OverlayImage"}})
      run.world.preferences.set(name, value);
    EXPECT_THAT(run.world.face.failures, IsEmpty());
    kept = applicable(run.world.preferences.model().values(), run.world.preferences.model().description());
    exportFrom(run);
    good = bytesOf(file);
  }

  // What is left of an import of one file that was killed after it was committed.
  void beginImport(const std::filesystem::path& target, const std::string& bytes) {
    FailingDisk dying(Files::realDisk());
    dying.fail = [&](const std::filesystem::path& path) {
      if (path == target) throw Files::DiskError("The process is killed.");
    };
    dying.isLasting = true;
    Files::FileSet set(dying, importJournal(other));
    set.write(target, bytes);
    dying.failing = dying.operations + 1;
    EXPECT_THROW(set.commit(), Files::DiskError);
    ASSERT_TRUE(std::filesystem::exists(importJournal(other)));
  }

  void exportFrom(PluginRun& run) { ProfileExport(run.world.preferences, UserData::included).pack(file, goOn); }

  const std::filesystem::path file = folder.path() / "profile.zip";
  TracePairs kept;   // the settings of the home
  std::string good;  // a complete archive of the home
};

TEST_F(FaultyHome, ExportsEverythingOrLeavesTheOldArchive) {
  ASSERT_FALSE(good.empty());
  int refusals = 0;
  const int faults = forEveryFault([&](FailingDisk& disk, const auto& arm, const Fault& fault) {
    Options options = optionsFor(home);
    options.disk = &disk;
    options.properties = kept;
    arm();
    const std::string failure = failureOf([&] {
      PluginRun run(options);
      exportFrom(run);
    });
    if (!failure.empty()) ++refusals;
    EXPECT_TRUE(bytesOf(file) == good) << fault << " " << failure;
  });
  EXPECT_GT(faults, 60);
  EXPECT_GT(refusals, 30);
}

TEST_F(FaultyHome, OpensWithASelectionAsItWasAndSaysWhatItMisses) {
  forEveryFault([&](FailingDisk& disk, const auto& arm, const Fault& fault) {
    Options options = optionsFor(home);
    options.disk = &disk;
    options.properties = kept;
    arm();
    try {
      PluginRun run(options);
      const bool showsEverything = run.watermarks().size() == 3 && run.overlays().size() == 3;
      EXPECT_EQ(run.value(u"WatermarkSel"), "WM_1") << fault;
      EXPECT_EQ(run.value(u"WatermarkText"), "Draft") << fault;
      EXPECT_EQ(run.value(u"OverlaySel"), "12345.opa") << fault;
      if (!showsEverything) {
        EXPECT_FALSE(run.world.preferences.unread().empty()) << fault;
      }
    } catch (const std::runtime_error& refusal) {
      EXPECT_STRNE(refusal.what(), "") << fault;
    }
  });
}

// Otherwise what is saved then would be overwritten when the import is completed, or its files be swept away.
TEST_F(FaultyHome, DoesNotOpenWhileAnImportIsHalfDone) {
  const std::filesystem::path watermarks = other / "user" / "ZVeffect.xml";
  const std::string after = watermarkFile(watermark("WM_2", "New") + watermark("WM_3", "Newer"));
  forEveryFault([&](FailingDisk& disk, const auto& arm, const Fault& fault) {
    std::filesystem::remove_all(other);
    putWatermarkFile(other, watermark("WM_1", "Draft"));
    beginImport(watermarks, after);
    Options options = optionsFor(other);
    options.disk = &disk;
    arm();
    failureOf([&] {
      PluginRun run(options);
      const int operations = disk.operations;
      disk.failing = 0;
      run.deleteWatermark(u"WM_3");
      disk.operations = operations;
    });
    PluginRun next(other);
    EXPECT_THAT(next.watermarks(), testing::Contains("WM_2=New")) << fault;
    EXPECT_THAT(next.world.face.failures, IsEmpty()) << fault;
  });
}

}  // namespace
