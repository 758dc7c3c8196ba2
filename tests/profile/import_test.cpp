// The atomicity of imports into a home.
#include "files/file_set.h"
#include "host/profiles/home_import.h"
#include "tests/files/cut_disk.h"
#include "tests/files/failing_disk.h"
#include "tests/profile/profile_world.h"

namespace {

using namespace Testing;
using namespace Refhost;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

// Redirects the system's temporary folder for the object's lifetime.
class TemporaryPlace {
 public:
  explicit TemporaryPlace(const std::filesystem::path& folder) : before(std::filesystem::temp_directory_path()) {
    set(folder);
  }
  ~TemporaryPlace() { set(before); }
  TemporaryPlace(const TemporaryPlace&) = delete;
  TemporaryPlace& operator=(const TemporaryPlace&) = delete;

 private:
  static void set(const std::filesystem::path& folder) {
#ifdef _WIN32
    _wputenv_s(L"TMP", folder.c_str());
#else
    setenv("TMPDIR", folder.c_str(), 1);
#endif
  }

  const std::filesystem::path before;
};

class Import : public ProfileWorld {
 protected:
  // A profile with content of each kind, and a home with different content of each kind.
  void putMany() {
    putWatermarks(watermark("WM_1", "Profile"));
    putOverlays(from / "overlays", {{u"Letterhead", u"12345.opa"}, {u"Form", u"23456.opa"}});
    pack();
    putHome();
  }
  void putHome() {
    std::filesystem::remove_all(home);
    put(watermarks, watermarkFile(watermark("WM_2", "Home")));
    putOverlays(overlays, {{u"Own", u"34567.opa"}});
    put(settingsFile(home, u"standard"), settingsBytes({{u"MirrorImage", u"None"}}));
  }

  // Opens the home like the next process.
  Tree opened() {
    Files::completeFileSet(Files::realDisk(), importJournal(home));
    Tree tree = treeOf(home);
    std::erase_if(tree, [](const auto& file) { return file.first.ends_with(".tmp"); });
    return tree;
  }
};

TEST_F(Import, IntoAnEmptyHomeGivesTheFilesByteForByte) {
  putWatermarks(watermark("WM_1", "One") + watermark("WM_2", "Two"));
  putOverlays(from / "overlays", {{u"Letterhead", u"12345.opa"}, {u"Form", u"23456.opa"}});
  import();
  Tree expected;
  for (const auto& [name, bytes] : treeOf(from / "overlays")) expected["profile/overlays/" + name] = bytes;
  expected["profile/overlays/"] = expected["profile/"] = expected["user/"] = "";
  expected["user/ZVeffect.xml"] = bytesOf(from / "ZVeffect.xml");
  expected["profile/settings-standard.json"] = settingsBytes({{u"MirrorImage", u"MirrorImage"}});
  EXPECT_EQ(treeOf(home), expected);
}

TEST_F(Import, OfTheSameProfileASecondTimeChangesNothing) {
  putMany();
  importPacked();
  const Tree once = treeOf(home);
  std::map<std::string, std::filesystem::file_time_type> times;
  for (const auto& [name, bytes] : once)
    if (!name.ends_with('/')) times[name] = std::filesystem::last_write_time(home / name);
  FailingDisk disk(Files::realDisk());
  importPacked(disk);
  EXPECT_EQ(treeOf(home), once);
  for (const auto& [name, time] : times) EXPECT_EQ(std::filesystem::last_write_time(home / name), time) << name;
}

TEST_F(Import, AddsToWhatIsThere) {
  putMany();
  importPacked();
  EXPECT_EQ(bytesOf(watermarks), watermarkFile(watermark("WM_1", "Profile") + watermark("WM_2", "Home")));
  const auto entries = Formats::readIndex(bytesOf(overlays / "ovlNmFl.flo"));
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(entries[0].name, u"Own");
  EXPECT_EQ(entries[1].name, u"Letterhead");
  EXPECT_EQ(entries[2].name, u"Form");
  EXPECT_EQ(bytesOf(overlays / "34567.opa"), "form Own");
  EXPECT_EQ(bytesOf(overlays / "12345.opa"), "form Letterhead");
  EXPECT_EQ(bytesOf(overlays / "12345.bmp"), "picture Letterhead");
}

TEST_F(Import, WithoutUserDataBringsTheValuesAlone) {
  putHome();
  Tree expected = treeOf(home);
  EXPECT_EQ(import().values, (TracePairs{{u"MirrorImage", u"MirrorImage"}}));
  expected["profile/settings-standard.json"] = settingsBytes({{u"MirrorImage", u"MirrorImage"}});
  EXPECT_EQ(treeOf(home), expected);
}

TEST_F(Import, KeepsTheSettingsOfItsModelOnly) {
  put(settingsFile(home, u"kvt"), "of another model");
  import();
  EXPECT_EQ(bytesOf(settingsFile(home, u"kvt")), "of another model");
}

TEST_F(Import, OfWhatIsNoProfileLeavesTheHomeAsItWas) {
  putMany();
  const Tree before = treeOf(home);
  const auto refused = [&](const std::string& why) {
    pack();
    EXPECT_THAT(refusal(), AllOf(StartsWith(file.string() + " is refused as a profile: "), HasSubstr(why)));
    EXPECT_EQ(treeOf(home), before) << why;
  };
  const std::string manifest = bytesOf(from / "profile.xml");
  const auto withManifest = [&](const std::string& bytes, const std::string& why) {
    put(from / "profile.xml", bytes);
    refused(why);
    put(from / "profile.xml", manifest);
  };
  withManifest("", "profile.xml:");
  withManifest("<Profile>", "profile.xml:1:");
  withManifest("<Other/>", "that of something else");
  withManifest("<Profile><version>1</version></Profile>", "no element \"model\"");
  withManifest("<Profile><version>1</version><model>a</model></Profile>", "no element \"values\"");
  withManifest("<Profile><model>a</model><values/></Profile>", "no element \"version\"");
  withManifest("<Profile><version>one</version><model>a</model><values/></Profile>", "its version is no number");
  withManifest("<Profile><version>0</version><model>a</model><values/></Profile>", "its version is no number");
  withManifest("<!DOCTYPE Profile [<!ENTITY a \"b\">]><Profile/>", "DOCTYPE");

  put(from / "stranger.txt", "?");
  refused("\"stranger.txt\" belongs to no profile");
  std::filesystem::remove(from / "stranger.txt");
  put(from / "overlays" / "99999.opa", "in no index");
  refused("\"overlays/99999.opa\" belongs to no profile");
  std::filesystem::remove(from / "overlays" / "99999.opa");
  std::filesystem::remove(from / "overlays" / "23456.opa");
  refused("no file for its overlay \"Form\"");
  putOverlays(from / "overlays", {{u"Form", u"23456.opa"}, {u"Letterhead", u"12345.opa"}});
  put(from / "overlays" / "ovlNmFl.flo", Formats::indexBytes({{u"Out", u"../profile"}}));
  refused("no file for its overlay \"Out\"");
  std::filesystem::remove_all(from / "overlays");
  put(from / "ZVeffect.xml", "<Watermarks><broken>");
  refused("ZVeffect.xml:1:");
  std::filesystem::remove(from / "profile.xml");
  refused("no profile.xml");
}

TEST_F(Import, OfANewerVersionIsRefusedAsThatWhateverElseIsInIt) {
  put(from / "profile.xml", "<Profile><version>2</version><news/></Profile>");
  put(from / "news.txt", "of the future");
  pack();
  EXPECT_THAT(refusal(), HasSubstr("newer version"));
  EXPECT_FALSE(std::filesystem::exists(home));
}

TEST_F(Import, IntoAHomeWhoseWatermarksCannotBeReadIsRefused) {
  putMany();
  put(watermarks, "damaged");
  const Tree before = treeOf(home);
  EXPECT_THAT(refusal(), AllOf(StartsWith(watermarks.string()), HasSubstr("import again")));
  EXPECT_EQ(treeOf(home), before);
}

TEST_F(Import, KilledAtAnyInstantLeavesTheHomeAsBeforeOrAsAfter) {
  putMany();
  const Tree before = treeOf(home);
  importPacked();
  const Tree after = treeOf(home);
  int ends[2] = {0, 0};
  for (int killedAt = 1;; ++killedAt) {
    putHome();
    CutDisk disk;
    disk.killedAt = killedAt;
    bool isDead = false;
    try {
      importPacked(disk);
    } catch (const Killed&) {
      isDead = true;
    }
    const Tree found = opened();
    EXPECT_TRUE(found == before || found == after) << killedAt;
    ++ends[found == after];
    if (!isDead) break;
  }
  EXPECT_GT(ends[0], 20);
  EXPECT_GT(ends[1], 10);
}

TEST_F(Import, ThatFailsAtAnyStepSaysSoAndLeavesTheHomeAsBeforeOrIsCompleted) {
  putMany();
  const Tree before = treeOf(home);
  importPacked();
  const Tree after = treeOf(home);
  for (int failing = 1;; ++failing) {
    putHome();
    FailingDisk disk(Files::realDisk());
    disk.failing = failing;
    std::string sentence;
    try {
      importPacked(disk);
    } catch (const std::runtime_error& error) {
      sentence = error.what();
    }
    if (disk.operations < failing) break;
    const bool isCompletedLater = sentence.find("at the next opening") != std::string::npos;
    EXPECT_EQ(opened(), sentence.empty() || isCompletedLater ? after : before) << failing << ": " << sentence;
  }
}

TEST_F(Import, ThatIsStoppedLeavesTheHomeAsItWas) {
  putMany();
  const Tree before = treeOf(home);
  for (int last = 0;; ++last) {
    int calls = 0;
    try {
      importPacked(Files::realDisk(), [&](int, int) { return calls++ < last; });
      ASSERT_GT(last, 6);
      break;
    } catch (const Stopped&) {
      EXPECT_EQ(treeOf(home), before) << last;
    }
  }
}

TEST_F(Import, LeavesNoTemporaryFolderBehind) {
  putMany();
  const Testing::TemporaryFolder temporaries;
  const TemporaryPlace place(temporaries.path);
  importPacked();
  EXPECT_TRUE(std::filesystem::is_empty(temporaries.path));
  put(from / "profile.xml", "");
  pack();
  refusal();
  EXPECT_TRUE(std::filesystem::is_empty(temporaries.path));
}

TEST_F(Import, IsRefusedWhileAnotherProgramIsChangingTheHome) {
  pack();
  std::filesystem::create_directories(home);
  const Files::HomeLock lock(Files::realDisk(), home);
  ProfileHome into = ProfileHome::closed(home);
  into.translate = [](std::u16string_view text) { return std::u16string(text); };
  into.longestWait = {};
  try {
    importProfile(Files::realDisk(), file, into, goOn);
    ADD_FAILURE() << "it was imported";
  } catch (const std::runtime_error& refusal) {
    EXPECT_THAT(refusal.what(), HasSubstr("is in use by another program; try again."));
  }
  EXPECT_THAT(treeOf(home), testing::IsEmpty());
}

}  // namespace
