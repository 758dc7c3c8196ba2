#include "files/temporary_folder.h"
#include "host/kept_settings.h"
#include "host/profiles/home_import.h"
#include "tests/files/every_fault.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

namespace Refhost {
namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::UnorderedElementsAre;
using Pair = std::pair<std::u16string, std::u16string>;

class KeptSettingsTest : public testing::Test {
 protected:
  void write(const std::string& bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << bytes;
  }

  KeptSettings read(Files::Disk& disk = Files::realDisk()) {
    return readSettings(file, [this](const std::string& sentence) { told.push_back(sentence); }, disk);
  }

  std::vector<std::string> told;
  Files::TemporaryFolder folder;
  std::filesystem::path home = folder.path();
  std::filesystem::path file = settingsFile(home, u"standard");
};

TEST_F(KeptSettingsTest, HaveAFileForEachModel) {
  EXPECT_EQ(file, home / "profile" / "settings-standard.json");
  EXPECT_EQ(settingsFile(home, u"a/b").filename(), "settings-a%2Fb.json");
}

TEST_F(KeptSettingsTest, ComeBackAsTheyWere) {
  writeSettings(file, {{u"MirrorImage", u"MirrorImage"}, {u"WatermarkText", u"\u4e0b\u66f8\u304d \"1\""}});
  EXPECT_THAT(read().values, UnorderedElementsAre(Pair(u"MirrorImage", u"MirrorImage"),
                                                  Pair(u"WatermarkText", u"\u4e0b\u66f8\u304d \"1\"")));
}

TEST_F(KeptSettingsTest, AreTextThatPeopleCanRead) {
  writeSettings(file, {{u"Nin1", u"None"}, {u"MirrorImage", u"MirrorImage"}});
  std::ostringstream content;
  content << std::ifstream(file).rdbuf();
  EXPECT_EQ(content.str(),
            "{\n    \"values\": {\n        \"MirrorImage\": \"MirrorImage\",\n        \"Nin1\": \"None\"\n    }\n}\n");
}

TEST_F(KeptSettingsTest, HaveAReplacementForWhatUtf8CannotCarry) {
  writeSettings(file, {{u"WatermarkText", u"a\xD83D"}});
  EXPECT_THAT(read().values, UnorderedElementsAre(Pair(u"WatermarkText", u"a\uFFFD\uFFFD\uFFFD")));
}

TEST_F(KeptSettingsTest, AreNoneWithoutAFile) {
  EXPECT_TRUE(read().values.empty());
  EXPECT_TRUE(read().setAside.empty());
}

TEST_F(KeptSettingsTest, ThatAreDamagedAreSetAside) {
  for (const char* damaged : {"", "{", "[]", "{\"values\": 3}", "{\"values\": {\"MirrorImage\": 1}}"}) {
    write(damaged);
    const KeptSettings kept = read();
    EXPECT_TRUE(kept.values.empty()) << damaged;
    EXPECT_EQ(kept.setAside.filename(), "settings-standard.json.damaged-1") << damaged;
    EXPECT_TRUE(std::filesystem::remove(kept.setAside)) << damaged;
    EXPECT_FALSE(std::filesystem::exists(file)) << damaged;
  }
}

TEST_F(KeptSettingsTest, ThatWereDamagedBeforeAreKeptToo) {
  const auto contentOf = [](const std::filesystem::path& path) {
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    return content.str();
  };
  for (const char* damaged : {"one", "two"}) {
    write(damaged);
    EXPECT_EQ(contentOf(read().setAside), damaged);
  }
  EXPECT_EQ(contentOf(home / "profile" / "settings-standard.json.damaged-1"), "one");
  EXPECT_EQ(contentOf(home / "profile" / "settings-standard.json.damaged-2"), "two");
}

// The next OK would save the settings before the import over those that it brings.
TEST_F(KeptSettingsTest, AreThoseOfAnImportThatWasInterrupted) {
  write(settingsBytes({{u"MirrorImage", u"None"}}));
  constexpr const char* left = ".kiln-2147483646-1.tmp";
  std::ofstream(file.parent_path() / left, std::ios::binary) << settingsBytes({{u"MirrorImage", u"MirrorImage"}});
  std::ofstream(importJournal(home), std::ios::binary)
      << "kiln-file-set 1\nprofile/" << left << '\0' << "profile/settings-standard.json" << '\0';
  EXPECT_THAT(read().values, UnorderedElementsAre(Pair(u"MirrorImage", u"MirrorImage")));
  EXPECT_FALSE(std::filesystem::exists(importJournal(home)));
  EXPECT_TRUE(told.empty());
}

TEST_F(KeptSettingsTest, AreReadAndTheJournalOfAnImportThatIsRefusedIsTold) {
  write(settingsBytes({{u"MirrorImage", u"MirrorImage"}}));
  std::ofstream(importJournal(home)) << "damaged";
  EXPECT_THAT(read().values, UnorderedElementsAre(Pair(u"MirrorImage", u"MirrorImage")));
  EXPECT_THAT(told, testing::ElementsAre(HasSubstr("import.journal is refused")));
}

TEST_F(KeptSettingsTest, ThatCannotBeWrittenAreOneSentence) {
  std::ofstream(home / "profile") << "a file where a folder belongs";
  try {
    writeSettings(file, {});
    FAIL() << "written";
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), testing::StartsWith("The settings are not kept: " + (home / "profile").string() + " c"));
  }
}

TEST_F(KeptSettingsTest, ThatCannotBeReadAreToldOfOnce) {
  std::filesystem::create_directories(file);
  EXPECT_EQ(failureOf([&] { read(); }), file.string() + " cannot be read: it is a folder.");
}

TEST_F(KeptSettingsTest, AreTheOldOnesOrTheNewOnesWhicheverOperationFails) {
  const TracePairs before{{u"MirrorImage", u"None"}};
  const TracePairs after{{u"MirrorImage", u"MirrorImage"}};
  const int faults = forEveryFault([&](FailingDisk& disk, const auto& arm, const Fault& fault) {
    writeSettings(file, before);
    arm();
    const std::string failure = failureOf([&] { writeSettings(file, after, disk); });
    const TracePairs now = read().values;
    EXPECT_TRUE(now == after || (now == before && !failure.empty())) << fault;
  });
  EXPECT_GT(faults, 15);
}

TEST_F(KeptSettingsTest, ThatCannotBeReadAreNeitherNoneNorDamaged) {
  const TracePairs values{{u"MirrorImage", u"MirrorImage"}};
  writeSettings(file, values);
  int failures = 0;
  forEveryFault([&](FailingDisk& disk, const auto& arm, const Fault& fault) {
    arm();
    TracePairs got;
    const std::string failure = failureOf([&] { got = read(disk).values; });
    if (failure.empty()) {
      EXPECT_EQ(got, values) << fault;
    } else {
      ++failures;
      EXPECT_THAT(failure, AnyOf(HasSubstr("settings-standard.json"), HasSubstr("import.journal"))) << fault;
    }
    EXPECT_EQ(read().values, values) << fault;
  });
  EXPECT_EQ(failures, 6);
}

TEST_F(KeptSettingsTest, ThatAreTooLargeAreDamaged) {
  write(std::string(2 << 20, ' '));
  EXPECT_EQ(read().setAside.filename(), "settings-standard.json.damaged-1");
}

TEST(ApplicableSettings, AreThoseThatAUserMaySetOnTheModel) {
  ModelDescription model;
  model.properties = {
      {u"Product", u"", {}, true}, {u"Nin1", u"None", {u"None", u"2in1"}, false}, {u"Text", u"", {}, false}};
  const TracePairs wanted{{u"Product", u"Tev"}, {u"Nin1", u"2in1"}, {u"Text", u"any"}, {u"Unknown", u"x"}};
  EXPECT_THAT(applicable(wanted, model), UnorderedElementsAre(Pair(u"Nin1", u"2in1"), Pair(u"Text", u"any")));
  EXPECT_TRUE(applicable({{u"Nin1", u"8in1"}}, model).empty());
}

TEST(ChangedValues, AreTheLastOnesThatAreNoDefaultsInTheOrderOfTheModel) {
  ModelDescription model;
  model.properties = {{u"A", u"1", {}, false}, {u"B", u"2", {}, false}, {u"C", u"3", {}, true}};
  const TracePairs given{{u"C", u"x"}, {u"B", u"y"}, {u"A", u"z"}, {u"A", u"1"}, {u"B", u"w"}, {u"Unknown", u"x"}};
  EXPECT_EQ(changedValues(given, model), (TracePairs{{u"B", u"w"}, {u"C", u"x"}}));
}

// Otherwise the next job into an overlay would reuse the last one's name and file without asking.
TEST(ApplicableSettings, LeaveOutWhatIsSaidOfOneJob) {
  const TracePairs ofTheJob{{u"PrintJob", u"Overlay"},
                            {u"OverlayImageCreate", u"On"},
                            {u"OverlayImageName", u"Letterhead"},
                            {u"OverlayDestFileName", u"/overlays/00001.opa"},
                            {u"OvlDestCreated", u"True"},
                            {u"CancelJob", u"True"}};
  for (const std::string& model : shippedModels(std::filesystem::path(RESOURCES_FOLDER) / "models"))
    EXPECT_TRUE(applicable(ofTheJob, readModel(std::filesystem::path(RESOURCES_FOLDER) / "models", model)).empty())
        << model;
}

}  // namespace
}  // namespace Refhost
