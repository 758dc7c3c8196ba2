// The plug-in's handling of profiles: the files written by the export signal, and reloading after an import.
#include "host/allocator.h"
#include "host/profiles/profile_event.h"
#include "tests/files/failing_disk.h"
#include "tests/profile/plugin_run.h"

namespace {

using namespace Testing;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::Not;
using testing::UnorderedElementsAre;
using Path = std::filesystem::path;

class Plugin : public ProfileHomes {};

// Exporting.

TEST_F(Plugin, ExportsItsStoresIntoTheLocation) {
  putWatermarkFile(home, watermark("WM_1", "Draft"));
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}, {u"Letterhead", u"23456.opa"}});
  PluginRun run(home);
  EXPECT_EQ(run.exportTo("p"), home / "localdata" / "p");
  const Tree exported = treeOf(home / "localdata" / "p");
  EXPECT_THAT(exported, UnorderedElementsAre(Key("ZVeffect.xml"), Key("overlays/"), Key("overlays/ovlNmFl.flo"),
                                             Key("overlays/12345.opa"), Key("overlays/12345.bmp"),
                                             Key("overlays/23456.opa"), Key("overlays/23456.bmp")));
  EXPECT_EQ(exported.at("ZVeffect.xml"), bytesOf(home / "user" / "ZVeffect.xml"));
  for (const auto& [name, bytes] : treeOf(overlaysOf(home))) EXPECT_EQ(exported.at("overlays/" + name), bytes) << name;
}

TEST_F(Plugin, ExportsIntoTheTargetItselfWhenThatIsAbsolute) {
  PluginRun run(home);
  EXPECT_EQ(run.exportTo(folder.path() / "elsewhere"), folder.path() / "elsewhere");
  EXPECT_TRUE(std::filesystem::exists(folder.path() / "elsewhere" / "ZVeffect.xml"));
  EXPECT_FALSE(std::filesystem::exists(home / "localdata"));
}

TEST_F(Plugin, ExportsOnlyWhenUserDataIsWanted) {
  PluginRun run(home);
  for (const char16_t* include : {u"true", u"False", u"TRUE", u"1", u"", u"True "}) {
    run.world.preferences.exportProfile("p", include);
    EXPECT_FALSE(std::filesystem::exists(home / "localdata")) << Formats::toUtf8(include);
  }
  run.world.preferences.exportProfile("p", u"True");
  EXPECT_TRUE(std::filesystem::exists(home / "localdata" / "p" / "ZVeffect.xml"));
}

TEST_F(Plugin, ExportsNothingWhereThereIsNoLocalData) {
  auto options = optionsFor(home);
  options.settings.emplace_back(u"kilnworks.user.localdata.path", std::nullopt);
  PluginRun run(options);
  const Tree before = treeOf(folder.path());
  EXPECT_EQ(run.world.preferences.exportProfile("p", u"True"), std::nullopt);
  EXPECT_EQ(treeOf(folder.path()), before);
}

TEST_F(Plugin, ExportsOverlaysIntoTheSettingsFolder) {
  auto options = optionsFor(home);
  options.settings.emplace_back(u"kilnworks.pdlsettings.folder", u"pdl/forms");
  putOverlays(home / "profile" / "pdl" / "forms", {{u"Form", u"12345.opa"}});
  PluginRun run(options);
  const Path location = run.exportTo("p");
  EXPECT_TRUE(std::filesystem::exists(location / "pdl" / "forms" / "12345.opa"));
}

TEST_F(Plugin, ExportsOverlaysIntoTheLocationWhereThereIsNoSettingsFolder) {
  auto options = optionsFor(home);
  options.settings.emplace_back(u"kilnworks.pdlsettings.folder", std::nullopt);
  putOverlays(home / "profile", {{u"Form", u"12345.opa"}});
  PluginRun run(options);
  EXPECT_TRUE(std::filesystem::exists(run.exportTo("p") / "12345.opa"));
}

TEST_F(Plugin, ExportsWhatWasChangedSinceTheOpening) {
  PluginRun run(home);
  run.deleteWatermark(u"2");
  const Path location = run.exportTo(folder.path() / "p");
  EXPECT_EQ(bytesOf(location / "ZVeffect.xml"), bytesOf(home / "user" / "ZVeffect.xml"));
  EXPECT_THAT(bytesOf(location / "ZVeffect.xml"), AllOf(HasSubstr("<_x0031_>"), Not(HasSubstr("<_x0032_>"))));
}

// The export writes an index that could not be written when an overlay was deleted.
TEST_F(Plugin, ExportSavesWhatIsStillUnsaved) {
  int unsaved = 0;
  for (int failing = 1;; ++failing) {
    const Path each = folder.path() / std::to_string(failing);
    putOverlays(overlaysOf(each), {{u"Form", u"12345.opa"}, {u"Letterhead", u"23456.opa"}});
    FailingDisk disk(Files::realDisk());
    auto options = optionsFor(each);
    options.disk = &disk;
    PluginRun run(options);
    run.overlayList().choose(2);
    run.world.face.onModal = [](Refhost::Dialog& dialog) { dialog.accept(); };
    disk.operations = 0;
    disk.failing = failing;
    run.world.widget<Refhost::Button>(u"btn_OvlDel").click();
    if (disk.operations < failing) break;
    const auto isIndexed = [&each] {
      const auto entries = Formats::readIndex(bytesOf(overlaysOf(each) / "ovlNmFl.flo"));
      return std::any_of(entries.begin(), entries.end(),
                         [](const auto& entry) { return entry.fileName == u"12345.opa"; });
    };
    if (run.overlays().size() != 3 || !isIndexed()) continue;
    ++unsaved;
    run.exportTo(folder.path() / ("exported " + std::to_string(failing)));
    EXPECT_FALSE(isIndexed()) << failing;
  }
  EXPECT_GT(unsaved, 0);
}

// An unmerged store is saved, and another one opened on the same files, which sees changes by others.
TEST_F(Plugin, ExportsTheFilesAsTheyAreNow) {
  PluginRun run(home);
  putWatermarkFile(home, watermark("WM_9", "Of another process"));
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
  const Path location = run.exportTo(folder.path() / "p");
  EXPECT_THAT(bytesOf(location / "ZVeffect.xml"), HasSubstr("Of another process"));
  EXPECT_TRUE(std::filesystem::exists(location / "overlays" / "12345.opa"));
}

std::vector<std::string> writes(const std::vector<Refhost::TraceEvent>& events) {
  std::vector<std::string> files;
  for (const auto& event : events)
    if (event.op == "write") files.push_back(member(event, "path"));
  return files;
}

TEST_F(Plugin, ExportsTheWatermarksThenTheOverlays) {
  putWatermarkFile(home, watermark("WM_1", "Draft"));
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
  PluginRun run(home);
  run.world.take();
  run.exportTo("p");
  const auto files = writes(run.world.take());
  ASSERT_EQ(files.size(), 4U);
  EXPECT_EQ(files.front(), "localdata/p/ZVeffect.xml");
  EXPECT_THAT(std::vector(files.begin() + 1, files.end()),
              UnorderedElementsAre("localdata/p/overlays/12345.opa", "localdata/p/overlays/12345.bmp",
                                   "localdata/p/overlays/ovlNmFl.flo"));
}

// What it has is on the disk before the files are read anew: here the copy of all records.
TEST_F(Plugin, ExportSavesTheWatermarksThatItHasFirst) {
  put(home / "localdata" / "a" / "ZVeffect.xml", watermarkFile(watermark("WM_a", "Theirs")));
  std::string first;
  PluginRun run(home);
  std::filesystem::remove(home / "localdata" / "ZVeffect.xml");
  putWatermarkFile(home, watermark("WM_9", "Of another process"));
  run.world.preferences.trace().listen([&](const Refhost::TraceEvent& event) {
    if (event.op == "write" && first.empty()) first = bytesOf(home / "localdata" / "ZVeffect.xml");
  });
  run.exportTo(folder.path() / "p");
  EXPECT_THAT(first, AllOf(HasSubstr("<_x0031_>"), HasSubstr("Theirs"), Not(HasSubstr("Of another process"))));
}

TEST_F(Plugin, ExportsTheFilesAsTheyAreNowAfterAnImportToo) {
  PluginRun run(home);
  run.world.preferences.importProfile("p", {});
  putWatermarkFile(home, watermark("WM_9", "Of another process"));
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
  const Path location = run.exportTo(folder.path() / "p");
  EXPECT_THAT(bytesOf(location / "ZVeffect.xml"), HasSubstr("Of another process"));
  EXPECT_TRUE(std::filesystem::exists(location / "overlays" / "12345.opa"));
}

// A merged store is exported as it is.
TEST_F(Plugin, ExportsAMergedStoreItself) {
  for (const char* data : {"a", "b"}) {
    put(home / "localdata" / data / "ZVeffect.xml", watermarkFile(watermark(std::string("WM_") + data, data)));
    putOverlays(home / "localdata" / data / "overlays", {{Formats::toUtf16(data), Formats::toUtf16(data) + u".opa"}});
  }
  PluginRun run(home);
  putWatermarkFile(home, watermark("WM_9", "Of another process"));
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
  const Path location = run.exportTo(folder.path() / "p");
  EXPECT_THAT(bytesOf(location / "ZVeffect.xml"),
              AllOf(HasSubstr("<WM_a>"), HasSubstr("<WM_b>"), Not(HasSubstr("Of another process")),
                    Not(HasSubstr("OrigId")), Not(HasSubstr("SourceFile"))));
  EXPECT_TRUE(std::filesystem::exists(location / "overlays" / "b.opa"));
  EXPECT_FALSE(std::filesystem::exists(location / "overlays" / "12345.opa"));
}

TEST_F(Plugin, ExportThatCannotBeWrittenIsToldByTheHost) {
  PluginRun run(home);
  writeFile(folder.path() / "file", "a file where a folder belongs");
  EXPECT_THROW(run.exportTo(folder.path() / "file" / "p"), std::runtime_error);
  EXPECT_THAT(run.world.face.failures, IsEmpty());
}

TEST_F(Plugin, ExportedProfileIsReadAsDownloadedDataByAnotherHome) {
  putWatermarkFile(home, watermark("WM_1", "Draft"));
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
  PluginRun(home).exportTo(other / "localdata" / "any");
  auto options = optionsFor(other);
  options.settings.emplace_back(u"kilnworks.tips.userdata.support", u"True");
  PluginRun run(options);
  EXPECT_THAT(run.watermarks(), Contains("WM_1_G=Draft*"));
  EXPECT_THAT(run.overlays(), Contains("12345.opa=Form*"));
}

// Importing.

TEST_F(Plugin, ExportThatRunsOutOfMemoryIsNoProfile) {
  putWatermarkFile(home, watermark("WM_1", "Draft"));
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
  PluginRun run(home);
  for (long blocks = 0;; ++blocks) {
    ASSERT_LT(blocks, 10'000);
    const Path to = folder.path() / std::to_string(blocks);
    bool isTold = false;
    Refhost::heap().failAfter(blocks);
    try {
      run.exportTo(to);
    } catch (const std::exception&) {
      isTold = true;
    }
    Refhost::heap().failAfter(-1);
    if (isTold) continue;
    EXPECT_TRUE(std::filesystem::exists(to / "ZVeffect.xml")) << blocks;
    EXPECT_TRUE(std::filesystem::exists(to / "overlays" / "12345.opa")) << blocks;
    return;
  }
}

// A disk that counts how often indexes of overlays are read.
class CountingDisk final : public ForwardingDisk {
 public:
  std::string read(const Path& file, std::size_t limit) override {
    reads += file.extension() == ".flo" ? 1 : 0;
    return ForwardingDisk::read(file, limit);
  }

  int reads = 0;
};

// An action that finds its file as it has read it does not read it again: what an export has seen does not count.
TEST_F(Plugin, DeletesAnOverlayAfterAnExportAsIfThereHadBeenNone) {
  const auto readsOfADeletion = [this](const Path& at, bool exportsFirst) {
    const Overlays own = {{u"Form", u"12345.opa"}, {u"Letterhead", u"23456.opa"}};
    putOverlays(overlaysOf(at), own);
    CountingDisk disk;
    Refhost::Options options = optionsFor(at);
    options.disk = &disk;
    PluginRun run(options);
    run.world.face.onModal = [](Refhost::Dialog& dialog) { dialog.accept(); };
    run.overlayList().choose(2);
    if (exportsFirst) run.exportTo(folder.path() / "exported");
    Overlays more = own;
    more.push_back({u"Terms", u"34567.opa"});
    putOverlays(overlaysOf(at), more);
    disk.reads = 0;
    run.world.widget<Refhost::Button>(u"btn_OvlDel").click();
    EXPECT_THAT(run.overlays(), AllOf(Contains(HasSubstr("Terms")), Not(Contains(HasSubstr("Form")))));
    return disk.reads;
  };
  EXPECT_EQ(readsOfADeletion(home, true), readsOfADeletion(other, false));
}

TEST_F(Plugin, HearsNoProfilesWithoutATab) {
  auto options = optionsFor(home);
  options.mode = Refhost::Mode::rootless;
  PluginRun run(options);
  run.world.preferences.exportProfile("p", u"True");
  run.world.preferences.importProfile("p", {});
  EXPECT_FALSE(std::filesystem::exists(home / "localdata"));
}

TEST(ProfileEvent, HasItsArguments) {
  Refhost::Trace trace;
  const Refhost::FileWorld files{Files::realDisk(), trace, "/home", {}};
  Refhost::ProfileEvent event(files, "p", u"True");
  EXPECT_TRUE(event.property(u"IncludeUserdata")->equals(u"True"));
  EXPECT_FALSE(event.property(u"includeuserdata"));
  EXPECT_FALSE(Refhost::ProfileEvent(files, "p", std::nullopt).property(u"IncludeUserdata"));
}

TEST(ProfileLocation, IsInTheLocalDataUnlessTheTargetIsAbsolute) {
  EXPECT_EQ(Refhost::profileLocation("/home/localdata", "p"), Path("/home/localdata/p"));
  EXPECT_EQ(Refhost::profileLocation("/home/localdata", "p/q"), Path("/home/localdata/p/q"));
#ifndef _WIN32
  EXPECT_EQ(Refhost::profileLocation("/home/localdata", "/tmp/p"), Path("/tmp/p"));
#endif
}

}  // namespace
