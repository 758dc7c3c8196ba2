// All user data, exported from one home and imported into another.
#include "files/file_set.h"
#include "host/profiles/home_import.h"
#include "tests/files/failing_disk.h"
#include "tests/profile/plugin_run.h"

namespace {

using namespace Testing;
using namespace Refhost;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Path = std::filesystem::path;

constexpr int many = 20;

class RoundTrip : public ProfileHomes {
 protected:
  // 20 watermarks besides the built-in ones, all different, and 20 overlays.
  void putMany() {
    std::string records = builtInRecords();
    Overlays overlays;
    for (int i = 0; i < many; ++i) {
      const std::string number = std::to_string(i);
      records += record(i, "WM_65F0ABCD_" + number + "_A_1B2C3D",
                        u"Entw\u00fcrfe \u4e0b\u66f8\u304d & <" + Formats::toUtf16(number) + u">");
      overlays.emplace_back(u"Briefkopf \u5370\u7ae0 " + Formats::toUtf16(number),
                            Formats::toUtf16(std::to_string(30000 + 7 * i)) + u".opa");
    }
    put(home / "user" / "ZVeffect.xml", watermarkFile(records));
    putOverlays(overlaysOf(home), overlays);
    for (int i = 0; i < many; ++i)
      put(overlaysOf(home) / (std::to_string(30000 + 7 * i) + ".opa"), noise(i, 5000 * i));  // the first is empty
    PluginRun first(home);  // rewrites the files in the stores' form
  }

  static std::string builtInRecords() {
    std::string file = bytesOf(Path(SOURCE_FOLDER) / "effect" / "content" / "effect.xml");
    const std::size_t start = file.find("<Watermarks>") + 12;
    return file.substr(start, file.find("</Watermarks>") - start);
  }

  static std::string record(int i, const std::string& id, const std::u16string& name) {
    std::string text;
    for (const char byte : Formats::toUtf8(name))
      text += byte == '&' ? "&amp;" : byte == '<' ? "&lt;" : std::string(1, byte);
    const std::string number = std::to_string(i);
    const char* const styles[] = {"Solid", "Outline", "Transparency"};
    return "<" + id + "><label>Text " + number + "</label><stylename>" + text + "</stylename><fontname>Face " + number +
           "</fontname><fontsize>" + std::to_string(10 + i) + "</fontsize><fontstyle>Bold</fontstyle><colour>#0000" +
           std::to_string(10 + i) + "</colour><angle>" + std::to_string(4 * i) + "</angle><positionX>L</positionX>" +
           "<positionY>U</positionY><printStyle>" + styles[i % 3] + "</printStyle><transparency><intensity>" +
           std::to_string(5 * i) + "</intensity></transparency><value>" + id + "</value></" + id + ">";
  }

  static std::string noise(int seed, int size) {
    std::string bytes;
    unsigned state = static_cast<unsigned>(seed) + 1;
    for (int i = 0; i < size; ++i) {
      state = state * 1664525 + 1013904223;
      bytes += static_cast<char>(static_cast<unsigned char>(state >> 24));
    }
    return bytes;
  }

  static void exportFrom(Preferences& preferences, const Path& file, UserData userData = UserData::included) {
    ProfileExport(preferences, userData).pack(file, goOn);
  }

  Manifest importInto(const Path& into) {
    ProfileHome closed = ProfileHome::closed(into);
    closed.translate = [](std::u16string_view text) { return std::u16string(text); };
    closed.settingsFile = [into](const std::u16string& model) { return settingsFile(into, model); };
    return importProfile(Files::realDisk(), file, closed, goOn);
  }

  static void refuseToTell(const std::string& sentence) { ADD_FAILURE() << sentence; }

  // Opens a home like the window.
  static Options asKept(const Path& kept) {
    Options options = optionsFor(kept);
    const auto model = readModel(options.resources / "models", options.model);
    options.properties = applicable(readSettings(settingsFile(kept, model.name), refuseToTell).values, model);
    return options;
  }

  const Path file = folder.path() / "profile.zip";
};

TEST_F(RoundTrip, BringsEveryPropertyRecordFileAndThumbnailIntoAnEmptyHome) {
  putMany();
  PluginRun run(home);
  for (const auto& [name, value] : TracePairs{{u"PaperSize", u"Letter"},
                                              {u"WatermarkSel", u"WM_65F0ABCD_7_A_1B2C3D"},
                                              {u"Watermark", u"Watermark"},
                                              {u"WatermarkOccurance", u"PerPage"},
                                              {u"OverlaySel", u"30035.opa"},
                                              {u"OverlayImage", u"OverlayImage"},
                                              {u"OverlaySourceFileName", (overlaysOf(home) / "30035.opa").u16string()},
                                              {u"OverlayLayering", u"Overlay"},
                                              {u"MirrorImage", u"MirrorImage"}})
    run.world.preferences.set(name, value);
  ASSERT_THAT(run.world.face.failures, IsEmpty());
  ASSERT_THAT(run.watermarks(), SizeIs(1 + 5 + many));
  ASSERT_THAT(run.overlays(), SizeIs(2 + many));
  exportFrom(run.world.preferences, file);

  importInto(other);
  EXPECT_EQ(bytesOf(other / "user" / "ZVeffect.xml"), bytesOf(home / "user" / "ZVeffect.xml"));
  EXPECT_THAT(treeOf(overlaysOf(other)), SizeIs(1 + 2 * many));
  EXPECT_EQ(treeOf(overlaysOf(other)), treeOf(overlaysOf(home)));

  PluginRun there(asKept(other));
  TracePairs expected = run.world.preferences.model().values();
  for (auto& [name, value] : expected)
    if (name == u"OverlaySourceFileName") value = (overlaysOf(other) / "30035.opa").u16string();
  EXPECT_EQ(there.world.preferences.model().values(), expected);
  EXPECT_EQ(there.watermarks(), run.watermarks());
  EXPECT_EQ(there.overlays(), run.overlays());
  EXPECT_EQ(there.value(u"WatermarkText"), "Text 7");
  EXPECT_THAT(there.world.face.failures, IsEmpty());

  // And back again: the same profile, byte for byte.
  const std::string before = bytesOf(file);
  exportFrom(there.world.preferences, file);
  importInto(home);
  PluginRun back(asKept(home));
  exportFrom(back.world.preferences, file);
  EXPECT_TRUE(bytesOf(file) == before);
}

TEST_F(RoundTrip, ASecondTimeChangesNothing) {
  putMany();
  {
    PluginRun run(home);
    exportFrom(run.world.preferences, file);
  }
  importInto(other);
  {
    PluginRun opened(asKept(other));
  }
  const Tree once = treeOf(other);
  importInto(other);
  EXPECT_EQ(treeOf(other), once);
  importInto(home);
  importInto(home);
  EXPECT_EQ(treeOf(home / "user"), treeOf(other / "user"));
  EXPECT_EQ(treeOf(overlaysOf(home)), treeOf(overlaysOf(other)));
}

TEST_F(RoundTrip, KeepsADeletedWatermarkDeleted) {
  PluginRun run(home);
  run.deleteWatermark(u"3");
  exportFrom(run.world.preferences, file);
  importInto(other);
  PluginRun there(asKept(other));
  EXPECT_EQ(there.watermarks(), run.watermarks());
  EXPECT_THAT(there.watermarks(), SizeIs(5));
}

TEST_F(RoundTrip, IntoOpenPreferencesShowsWhatCame) {
  putMany();
  PluginRun run(home);
  run.world.preferences.set(u"MirrorImage", u"MirrorImage");
  exportFrom(run.world.preferences, file);

  PluginRun there(other);
  const auto into = ProfileHome::of(there.world.preferences);
  for (int time = 0; time < 2; ++time) {
    const Manifest manifest = importProfile(Files::realDisk(), file, into, goOn);
    there.world.preferences.importProfile(file, manifest.values);
    EXPECT_EQ(there.world.preferences.model().values(), run.world.preferences.model().values());
    EXPECT_EQ(there.watermarks(), run.watermarks());
    EXPECT_EQ(there.overlays(), run.overlays());
    EXPECT_EQ(bytesOf(other / "user" / "ZVeffect.xml"), bytesOf(home / "user" / "ZVeffect.xml"));
  }
  EXPECT_THAT(there.world.face.failures, IsEmpty());
}

TEST_F(RoundTrip, WithoutUserDataBringsTheSettingsAlone) {
  putMany();
  PluginRun run(home);
  run.world.preferences.set(u"MirrorImage", u"MirrorImage");
  exportFrom(run.world.preferences, file, UserData::leftOut);
  importInto(other);
  EXPECT_THAT(treeOf(other),
              testing::UnorderedElementsAre(testing::Key("profile/"), testing::Key("profile/settings-standard.json")));
  EXPECT_EQ(PluginRun(asKept(other)).value(u"MirrorImage"), "MirrorImage");
}

// Even if the plug-in would skip an unreadable file.
TEST_F(RoundTrip, OfAnExportThatFailsLeavesNoProfile) {
  putWatermarkFile(home, watermark("WM_1", "Draft"));
  putOverlays(overlaysOf(home), {{u"Form", u"12345.opa"}});
  {
    PluginRun first(home);
  }
  int failures = 0;
  for (int failing = 1;; ++failing) {
    Options options = optionsFor(home);
    FailingDisk disk(Files::realDisk());
    options.disk = &disk;
    PluginRun run(options);
    disk.failing = disk.operations + failing;
    try {
      exportFrom(run.world.preferences, file);
    } catch (const std::runtime_error&) {
      EXPECT_FALSE(std::filesystem::exists(file)) << failing;
      ++failures;
    }
    if (disk.operations < disk.failing) break;
    if (!std::filesystem::exists(file)) continue;
    std::filesystem::remove_all(other);
    importInto(other);
    EXPECT_EQ(bytesOf(other / "user" / "ZVeffect.xml"), bytesOf(home / "user" / "ZVeffect.xml")) << failing;
    EXPECT_EQ(treeOf(overlaysOf(other)), treeOf(overlaysOf(home))) << failing;
    std::filesystem::remove(file);
  }
  EXPECT_GT(failures, 15);
}

// Remains of an interrupted import.
TEST_F(RoundTrip, IsCompletedByTheNextOpening) {
  putWatermarkFile(home, watermark("WM_1", "Old"));
  {
    FailingDisk disk(Files::realDisk());
    Files::FileSet set(disk, importJournal(home));
    set.write(home / "user" / "ZVeffect.xml", watermarkFile(watermark("WM_2", "New")));
    disk.failing = disk.operations + 12;  // reading the journal again
    EXPECT_THROW(set.commit(), Files::DiskError);
  }
  ASSERT_TRUE(std::filesystem::exists(importJournal(home)));
  PluginRun run(home);
  EXPECT_THAT(run.watermarks(), Contains("WM_2=New"));
  EXPECT_FALSE(std::filesystem::exists(importJournal(home)));
  EXPECT_THAT(run.world.face.failures, IsEmpty());
}

// Of a process that was killed before its import was committed.
TEST_F(RoundTrip, LeavesNothingOfAnImportThatDied) {
  constexpr const char* left = ".kiln-2147483646-1.tmp";
  for (const Path& in : {home, home / "user", home / "profile", overlaysOf(home)}) put(in / left, "half a file");
  PluginRun run(home);
  for (const auto& [name, bytes] : treeOf(home)) EXPECT_FALSE(name.ends_with(".tmp")) << name;
}

// A home from elsewhere.
TEST_F(RoundTrip, MovesNothingForTheJournalOfAHostileHomeAndSaysSoOnce) {
  const Path victim = folder.path() / "victim";
  put(victim, "precious");
  put(folder.path() / ".kiln-2147483646-1.tmp", "hostile");
  put(importJournal(home), std::string("kiln-file-set 1\n../.kiln-2147483646-1.tmp") + '\0' + "../victim" + '\0');
  {
    PluginRun run(home);
    EXPECT_THAT(run.world.face.failures, testing::ElementsAre(HasSubstr("import.journal.refused-1")));
    EXPECT_THAT(run.watermarks(), SizeIs(6));
  }
  EXPECT_EQ(bytesOf(victim), "precious");
  PluginRun again(home);
  EXPECT_THAT(again.world.face.failures, IsEmpty());
}

TEST_F(RoundTrip, OpensAHomeWhoseImportCannotBeCompletedAndSaysSo) {
  put(importJournal(home), "damaged");
  PluginRun run(home);
  EXPECT_THAT(run.world.face.failures, testing::ElementsAre(HasSubstr("import.journal is refused")));
  EXPECT_THAT(run.watermarks(), SizeIs(6));
}

}  // namespace
