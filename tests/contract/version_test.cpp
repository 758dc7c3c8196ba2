// Host and plug-in tell each other the version of the contract before anything else.
#include "host/library.h"
#include "host/preferences.h"
#include "kiln/version.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using Testing::World;

std::string refusalOf(const std::string& library) {
  Refhost::Options options = Testing::builtOptions();
  options.plugin = library;
  try {
    const World world(options);
  } catch (const std::runtime_error& refusal) {
    return refusal.what();
  }
  return "";
}

TEST(Version, OfAnotherMajorIsRefusedWithBoth) {
  const std::string newer = refusalOf(NEWER_PLUGIN);
  EXPECT_THAT(newer, HasSubstr(NEWER_PLUGIN));
  EXPECT_THAT(newer, HasSubstr("speaks version 3.1 of the plug-in contract, and this program version 2.0:"));
  EXPECT_THAT(newer, HasSubstr("Use a program as new as the library."));
  const std::string older = refusalOf(OLDER_PLUGIN);
  EXPECT_THAT(older, HasSubstr("speaks version 1.4 of the plug-in contract, and this program version 2.0:"));
  EXPECT_THAT(older, HasSubstr("Build the library again"));
}

TEST(Version, ThatIsNotToldIsRefused) {
  const std::string silent = refusalOf(SILENT_PLUGIN);
  EXPECT_THAT(silent, HasSubstr(SILENT_PLUGIN));
  EXPECT_THAT(silent, HasSubstr("speaks version 1 of the plug-in contract, or none, and this program version 2.0"));
}

TEST(Version, ThatOnlyAddsIsAccepted) { EXPECT_EQ(refusalOf(ADDING_PLUGIN), ""); }

TEST(Version, IsAnsweredForItsQuestionAlone) {
  Kiln::VersionExchange versions;
  for (const char* name : {"", "effect", "kiln.versio", "kiln.version2", "Kiln.version"}) {
    EXPECT_FALSE(Kiln::answerVersion(name, &versions)) << name;
    EXPECT_EQ(versions.plugin.major, 0);
  }
  EXPECT_FALSE(Kiln::answerVersion(Kiln::versionQuestion, nullptr));
  EXPECT_TRUE(Kiln::answerVersion(Kiln::versionQuestion, &versions));
  EXPECT_EQ(versions.plugin.major, Kiln::contractVersion.major);
  EXPECT_EQ(versions.plugin.minor, Kiln::contractVersion.minor);
}

TEST(Version, WorksWithEveryMinorOfItsMajor) {
  const Kiln::ContractVersion two{2, 3};
  EXPECT_TRUE(two.worksWith({2, 0}));
  EXPECT_TRUE(two.worksWith({2, 9}));
  EXPECT_FALSE(two.worksWith({1, 3}));
  EXPECT_FALSE(two.worksWith({3, 3}));
}

// How often a plug-in that wants `wanted` calls without a GUI gets them.
std::size_t callsOf(const char16_t* wanted) {
  Refhost::Options options = Testing::builtOptions();
  options.plugin = ADDING_PLUGIN;
  options.mode = Refhost::Mode::rootless;
  options.settings.emplace_back(u"versioned.calls", wanted);
  World world(options);
  return world.value(u"OverlayImageName").size();
}

TEST(RootlessActivation, IsCalledUntilThePluginIsDone) {
  EXPECT_EQ(callsOf(u"1"), 1U);
  EXPECT_EQ(callsOf(u"3"), 3U);
  EXPECT_EQ(callsOf(u"100"), 100U);
}

TEST(RootlessActivation, ThatNeverEndsIsAFailure) {
  EXPECT_THAT([] { callsOf(u"101"); }, testing::ThrowsMessage<std::runtime_error>(
                                           HasSubstr("rootlessActivation: It asks for more than 100 calls.")));
}

}  // namespace
