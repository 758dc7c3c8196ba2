#include "files/temporary_folder.h"
#include "host/kept_settings.h"
#include "tests/files/every_fault.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

namespace Refhost {
namespace {

using testing::HasSubstr;
using testing::UnorderedElementsAre;
using Pair = std::pair<std::u16string, std::u16string>;

class KeptSettingsTest : public testing::Test {
 protected:
  void write(const std::string& bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << bytes;
  }

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
  EXPECT_THAT(readSettings(file).values, UnorderedElementsAre(Pair(u"MirrorImage", u"MirrorImage"),
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
  EXPECT_THAT(readSettings(file).values, UnorderedElementsAre(Pair(u"WatermarkText", u"a\uFFFD\uFFFD\uFFFD")));
}

TEST_F(KeptSettingsTest, AreNoneWithoutAFile) {
  EXPECT_TRUE(readSettings(file).values.empty());
  EXPECT_TRUE(readSettings(file).setAside.empty());
}

TEST_F(KeptSettingsTest, ThatAreDamagedAreSetAside) {
  for (const char* damaged : {"", "{", "[]", "{\"values\": 3}", "{\"values\": {\"MirrorImage\": 1}}"}) {
    write(damaged);
    const KeptSettings kept = readSettings(file);
    EXPECT_TRUE(kept.values.empty()) << damaged;
    EXPECT_EQ(kept.setAside.filename(), "settings-standard.json.damaged") << damaged;
    EXPECT_TRUE(std::filesystem::exists(kept.setAside)) << damaged;
    EXPECT_FALSE(std::filesystem::exists(file)) << damaged;
  }
}

TEST_F(KeptSettingsTest, ThatCannotBeWrittenAreOneSentence) {
  std::ofstream(home / "profile") << "a file where a folder belongs";
  try {
    writeSettings(file, {});
    FAIL() << "written";
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), HasSubstr("settings-standard.json"));
  }
}

TEST_F(KeptSettingsTest, AreTheOldOnesOrTheNewOnesWhicheverOperationFails) {
  const TracePairs before{{u"MirrorImage", u"None"}};
  const TracePairs after{{u"MirrorImage", u"MirrorImage"}};
  const int faults = forEveryFault([&](FailingDisk& disk, const auto& arm, const Fault& fault) {
    writeSettings(file, before);
    arm();
    const std::string failure = failureOf([&] { writeSettings(file, after, disk); });
    const TracePairs now = readSettings(file).values;
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
    TracePairs read;
    const std::string failure = failureOf([&] { read = readSettings(file, disk).values; });
    if (failure.empty()) {
      EXPECT_EQ(read, values) << fault;
    } else {
      ++failures;
      EXPECT_THAT(failure, HasSubstr("settings-standard.json")) << fault;
    }
    EXPECT_EQ(readSettings(file).values, values) << fault;
  });
  EXPECT_EQ(failures, 4);
}

TEST_F(KeptSettingsTest, ThatAreTooLargeAreDamaged) {
  write(std::string(2 << 20, ' '));
  EXPECT_EQ(readSettings(file).setAside.filename(), "settings-standard.json.damaged");
}

TEST(ApplicableSettings, AreThoseThatAUserMaySetOnTheModel) {
  ModelDescription model;
  model.properties = {
      {u"Product", u"", {}, true}, {u"Nin1", u"None", {u"None", u"2in1"}, false}, {u"Text", u"", {}, false}};
  const TracePairs wanted{{u"Product", u"Tev"}, {u"Nin1", u"2in1"}, {u"Text", u"any"}, {u"Unknown", u"x"}};
  EXPECT_THAT(applicable(wanted, model), UnorderedElementsAre(Pair(u"Nin1", u"2in1"), Pair(u"Text", u"any")));
  EXPECT_TRUE(applicable({{u"Nin1", u"8in1"}}, model).empty());
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
