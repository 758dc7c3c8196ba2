// kiln print --settings: what OK in the window has kept.
#include "tests/script/printed_job.h"

#include <gmock/gmock.h>

namespace {

using std::filesystem::path;
using testing::HasSubstr;
using testing::StartsWith;

class PrintSettings : public PrintedJob {
 protected:
  void SetUp() override {
    PrintedJob::SetUp();
    std::filesystem::create_directories(home / "profile");
  }

  void keep(const std::string& values) const {
    writeFile(home / "profile" / "settings-standard.json", "{\"values\": {" + values + "}}");
  }

  const std::string sentence =
      "kiln: The effects that \"kiln show\" has kept are not printed: --settings prints with them.\n";
};

TEST_F(PrintSettings, AreThoseKeptInTheHome) {
  ASSERT_EQ(print({"--set", "MirrorImage=MirrorImage"}, wanted).status, 0);
  keep("\"MirrorImage\": \"MirrorImage\"");
  const auto outcome = print({"--settings"}, out);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_TRUE(samePages(readFile(out), readFile(wanted)));
}

TEST_F(PrintSettings, AreChangedByTheOtherOptions) {
  ASSERT_EQ(print({"--set", "MirrorImage=MirrorImage", "--set", "NegativeImage=Negative"}, wanted).status, 0);
  keep("\"MirrorImage\": \"MirrorImage\", \"NegativeImage\": \"None\"");
  ASSERT_EQ(print({"--settings", "--set", "NegativeImage=Negative"}, out).status, 0);
  EXPECT_TRUE(samePages(readFile(out), readFile(wanted)));
}

TEST_F(PrintSettings, ThatAreNotUsedAreToldOf) {
  ASSERT_EQ(print({}, wanted).status, 0);
  keep("\"MirrorImage\": \"MirrorImage\"");
  const auto outcome = print({}, out);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, sentence);
  EXPECT_TRUE(samePages(readFile(out), readFile(wanted)));
}

TEST_F(PrintSettings, WithoutAnEffectAreNotToldOf) {
  keep("\"MirrorImage\": \"None\", \"PaperSize\": \"A3\"");
  EXPECT_EQ(print({}, out).err, "");
}

TEST_F(PrintSettings, ThatCannotBeReadAreLeftAloneUnlessTheyAreAskedFor) {
  const path file = home / "profile" / "settings-standard.json";
  writeFile(file, "damaged");
  const auto outcome = print({}, out);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(readFile(file), "damaged");
  const auto asked = print({"--settings"}, out);
  EXPECT_EQ(asked.status, 1);
  EXPECT_THAT(asked.err, HasSubstr("were damaged"));
}

TEST_F(PrintSettings, ThatThereAreNoneAreToldOf) {
  const auto outcome = print({"--settings"}, out);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, StartsWith("kiln: No settings are kept in "));
}

TEST_F(PrintSettings, OfTheHomeAndAProfileExcludeEachOther) {
  EXPECT_EQ(print({"--settings", "--profile", "some.zip"}, out).status, 2);
}

TEST_F(PrintSettings, BecomeATicket) {
  keep("\"MirrorImage\": \"MirrorImage\"");
  const auto outcome = runKiln({"ticket", "--settings", "--home", home.string()});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("MirrorImage"));
  EXPECT_EQ(outcome.out,
            runKiln({"ticket", "--set", "MirrorImage=MirrorImage", "--home", (testFolder() / "other").string()}).out);
}

}  // namespace
