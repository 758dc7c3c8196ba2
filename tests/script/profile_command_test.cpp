// kiln profile: exporting and importing settings, watermarks and overlays.
#include "tests/script/process.h"

#include <gmock/gmock.h>

#include <fstream>

namespace {

using std::filesystem::path;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ProfileCommand : public testing::Test {
 protected:
  ProfileCommand() {
    put(settings(home), R"({"values": {"MirrorImage": "MirrorImage", "ModelNumber": "KVT"}})");
    put(home / "user" / "ZVeffect.xml", "<Watermarks><WM_1><label>Mine</label><value>WM_1</value></WM_1></Watermarks>");
  }

  static void put(const path& file, const std::string& content) {
    std::filesystem::create_directories(file.parent_path());
    writeFile(file, content);
  }
  static path settings(const path& of, const std::string& model = "standard") {
    return of / "profile" / ("settings-" + model + ".json");
  }

  Outcome exportTo(const path& profile, std::vector<std::string> more = {}) {
    std::vector<std::string> words = {"profile", "export", profile.string(), "--home", home.string()};
    words.insert(words.end(), more.begin(), more.end());
    return runKiln(words);
  }
  Outcome importFrom(const path& profile, std::vector<std::string> more = {}) {
    std::vector<std::string> words = {"profile", "import", profile.string(), "--home", other.string()};
    words.insert(words.end(), more.begin(), more.end());
    return runKiln(words);
  }

  const path home = testFolder() / "home";
  const path other = testFolder() / "other";
  const path file = testFolder() / "mine.zip";
};

TEST_F(ProfileCommand, TakesWhatAPersonHasToAnotherHome) {
  const auto out = exportTo(file);
  ASSERT_EQ(out.status, 0) << out.err;
  const auto in = importFrom(file);
  ASSERT_EQ(in.status, 0) << in.err;
  EXPECT_EQ(out.out + out.err + in.out + in.err, "");
  EXPECT_EQ(readFile(other / "user" / "ZVeffect.xml"), readFile(home / "user" / "ZVeffect.xml"));
  EXPECT_THAT(readFile(settings(other)), AllOf(HasSubstr("\"MirrorImage\": \"MirrorImage\""),
                                               HasSubstr("\"PaperSize\": \"A4\""), Not(HasSubstr("ModelNumber"))));
  EXPECT_THAT(runKiln({"drive", "--home", other.string()}, "widget lst_selectedWatermark\n").out,
              HasSubstr("\"Mine\""));
}

TEST_F(ProfileCommand, LeavesOutUserDataWhenAsked) {
  ASSERT_EQ(exportTo(file, {"--no-user-data"}).status, 0);
  ASSERT_EQ(importFrom(file).status, 0);
  EXPECT_FALSE(std::filesystem::exists(other / "user"));
  EXPECT_THAT(readFile(settings(other)), HasSubstr("\"MirrorImage\": \"MirrorImage\""));
}

TEST_F(ProfileCommand, ReplacesAFileOnlyByAWholeProfile) {
  put(file, "as it was");
  EXPECT_EQ(exportTo(file, {"--model", "none"}).status, 2);
  EXPECT_EQ(readFile(file), "as it was");
  EXPECT_EQ(exportTo(file).status, 0);
  EXPECT_THAT(readFile(file), StartsWith("PK"));
  const auto outcome = exportTo(testFolder() / "none" / "mine.zip");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("mine.zip"));
}

TEST_F(ProfileCommand, ImportsForTheProfilesModelOrTheOneThatIsNamed) {
  ASSERT_EQ(exportTo(file, {"--model", "kvt"}).status, 0);
  ASSERT_EQ(importFrom(file).status, 0);
  EXPECT_TRUE(std::filesystem::exists(settings(other, "kvt")));
  EXPECT_FALSE(std::filesystem::exists(settings(other)));
  ASSERT_EQ(importFrom(file, {"--model", "standard"}).status, 0);
  EXPECT_TRUE(std::filesystem::exists(settings(other)));
  EXPECT_EQ(importFrom(file, {"--model", "none"}).status, 1);
}

TEST_F(ProfileCommand, RefusesWhatIsNoProfileAndMakesNoHome) {
  put(file, "PK\3\4, but no archive");
  const auto outcome = importFrom(file);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, StartsWith("kiln: " + file.string() + " is refused as a profile: "));
  EXPECT_EQ(importFrom(testFolder() / "none.zip").status, 1);
  EXPECT_FALSE(std::filesystem::exists(other));
}

TEST_F(ProfileCommand, TellsOfSettingsThatAreDamaged) {
  put(settings(home), "damaged");
  const auto outcome = exportTo(file);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr("settings-standard.json.damaged"));
}

TEST_F(ProfileCommand, ExportsTheSettingsOfAnImportThatWasInterrupted) {
  constexpr const char* left = ".kiln-2147483645-1.tmp";
  put(settings(home), R"({"values": {"MirrorImage": "None"}})");
  put(home / "profile" / left, R"({"values": {"MirrorImage": "MirrorImage"}})");
  put(home / "import.journal",
      "kiln-file-set 1\nprofile/" + std::string(left) + '\0' + "profile/settings-standard.json" + '\0');
  ASSERT_EQ(exportTo(file).status, 0);
  ASSERT_EQ(importFrom(file).status, 0);
  EXPECT_THAT(readFile(settings(other)), HasSubstr(R"("MirrorImage": "MirrorImage")"));
}

TEST_F(ProfileCommand, TellsOfAFileThatTheProfileNamesButDoesNotHold) {
  const path secret = testFolder() / "secret.pdf";
  put(secret, "a person's own");
  put(settings(home), R"({"values": {"OverlayImage": "OverlayImage", "OverlaySel": "secret.pdf",
                       "OverlaySourceFileName": ")" +
                          secret.generic_string() + "\"}}");
  ASSERT_EQ(exportTo(file).status, 0);
  const auto outcome = importFrom(file);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "kiln: The overlay \"" + secret.generic_string() +
                             "\" is not in the profile, and is left out: choose another one, or none.\n");
  EXPECT_THAT(readFile(settings(other)), HasSubstr("\"OverlaySourceFileName\": \"\""));
  EXPECT_EQ(runKiln({"ticket", "--profile", file.string()}).err, outcome.err);
}

TEST_F(ProfileCommand, NeedsToBeToldWhatToDo) {
  EXPECT_EQ(runKiln({"profile"}).status, 2);
  EXPECT_EQ(runKiln({"profile", "export"}).status, 2);
  EXPECT_EQ(runKiln({"profile", "import"}).status, 2);
  EXPECT_THAT(runKiln({"profile", "--help"}).out, AllOf(HasSubstr("export"), HasSubstr("import")));
}

}  // namespace
